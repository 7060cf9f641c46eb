// What every object of a drawing keeps: the groups of its record as the file has them, in order.
// It is no interface of the framework: dynamic_cast reaches it. Category, relations, parameters and
// extended data of the object are views of these groups, and what is changed there prevails when
// the drawing is written; see WrittenGroups.h. Stream form: above SavePart in DrawingPart.cpp.
#pragma once

#include "drawing/GroupList.h"

struct IZDMObject;

namespace zdm {

class DrawingPart {
 public:
  const GroupList& Groups() const { return groups_; }
  void SetGroups(GroupList groups);
  /// The groups from there on stand behind the objects that this one holds: such as the end of a
  /// section. Groups().Count() when there are none.
  ULONG Tail() const { return tail_; }
  /// Groups behind the objects.
  void AppendTail(const GroupList& groups);
  /// The place among the objects of its section, which the manager tree does not show for entries
  /// of dictionaries. 0 elsewhere.
  LONG Place() const { return place_; }
  void SetPlace(LONG place) { place_ = place; }

  /// The type of the record: the value of its first group, without blanks.
  std::string_view Type() const;
  /// The handle as written, or empty.
  std::string_view Handle() const;

 protected:
  DrawingPart() = default;
  DrawingPart(const DrawingPart&) = default;
  DrawingPart& operator=(const DrawingPart&) = default;
  virtual ~DrawingPart() = default;

  void SavePart(IZStream* stream) const;
  void LoadPart(IZStream* stream);

 private:
  GroupList groups_;
  ULONG tail_ = 0;
  LONG place_ = 0;
};

/// Null for what is no object of a drawing.
DrawingPart* PartOf(IZDMObject* object);

/// The code of the group with an object's own handle.
LONG HandleCodeOf(std::string_view type);

}  // namespace zdm
