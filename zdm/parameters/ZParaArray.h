// What a parameter array keeps its parameters in, one reference each, in the order that it was
// given. A few stand in the array itself, so that a look-up has no other block to go through; more
// have a block of their own, of exactly their number. Beside each stands a mark made of the
// definition GUID that it had when it was last looked at; a look-up starts from the marks and
// believes one only when the parameter confirms it, so that it need not ask several. Stream form:
// above Save in ZParaArray.cpp.
#pragma once

#include "platform/core/ChangeWatch.h"
#include "zdm/framework/GuidKey.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/parameters/IZParameter.h"

#include <span>

namespace zdm {

/// A parameter on its way into an array.
struct ParaEntry {
  GuidKey key;  // of its definition, once that was asked
  ZRefPtr<IZParameter> parameter;
};

/// Asks each for the key of its definition and sorts by it; those with equal keys keep their order.
void SortByDefinition(std::span<ParaEntry> entries);

}  // namespace zdm

class ZDM_API ZParaArray {
 public:
  ZParaArray() = default;
  /// A copy holds the same parameters, with references of its own.
  ZParaArray(const ZParaArray& other);
  ZParaArray(ZParaArray&& other) noexcept;
  ZParaArray& operator=(ZParaArray other) noexcept;

  virtual void Save(IZStream* stream, IZDatabase* database);  // 0
  /// In place of what is held, in the stored order. Damage throws CAtlException(E_FAIL), and the
  /// parameters read before it stay.
  virtual void Load(IZStream* stream, IZDatabase* database);  // 1
  virtual void RemoveAll();                                   // 2
  virtual ~ZParaArray();

  LONG GetCount() const { return count_; }
  /// Borrowed; `index` must be within the bounds.
  IZParameter* at(LONG index) const { return Items()[index]; }
  /// By binary search over the definition GUIDs, then by a scan from the first; where a
  /// definition's GUID became that of another one only since, perhaps the other one's. Borrowed;
  /// null if none and for GUID_UNSET.
  IZParameter* GetParameter(const GUID& definitionGUID) const;
  /// The place of what GetParameter answers; -1 if none.
  LONG IndexOf(const GUID& definitionGUID) const;
  /// The first place of a parameter of that definition, which may be GUID_UNSET; -1 if none.
  LONG FirstOf(const GUID& definitionGUID) const;
  /// The first place of that very parameter; -1 if none.
  LONG IndexOf(const IZParameter* parameter) const;
  /// By binary search alone; in an array out of order it may miss.
  bool IsExist(const GUID& definitionGUID) const;
  /// What is held is remembered by somebody; see ChangeWatch.h.
  void Watch() { zdm::ChangeWatch::Watch(watch_); }
  /// Makes `array` the one that every parameter reports to.
  void SetOwner(IZParameterArray* array) const;

  /// Holds these in their order, in place of what was held. Takes over their references.
  void Assign(std::span<zdm::ParaEntry> entries);
  /// Holds what `copy` makes of each of the parameters that `source` holds, in place of what was
  /// held.
  void AssignCopies(const ZParaArray& source, ZRefPtr<IZParameter> (*copy)(IZParameter*));
  /// Removes one and hands it over; `index` must be within the bounds.
  ZRefPtr<IZParameter> Take(LONG index);

 private:
  static constexpr LONG kFew = 8;
  static constexpr LONG kMostMarks = 64;  // more are not looked through one after the other
  // What FindMark answers instead of a place.
  static constexpr LONG kNone = -1;
  static constexpr LONG kSeveral = -2;

  struct Few {
    IZParameter* items[kFew];
    ULONG marks[kFew];
  };
  struct Many {
    IZParameter** items;  // the marks follow in the same block
    ULONG* marks;
  };

  void Allocate(LONG room);
  void Exchange(ZParaArray& other);
  void Append(ZRefPtr<IZParameter> parameter, ULONG mark);
  void LookAgain() const;
  LONG IndexBySearch(const GUID& definitionGUID) const;
  LONG FindMark(ULONG mark) const;
  IZParameter** Items() const { return isMany_ ? held_.many.items : held_.few.items; }
  ULONG* Marks() const { return isMany_ ? held_.many.marks : held_.few.marks; }

  union Held {
    Few few = {};
    Many many;
  };
  mutable Held held_;  // looking again changes the marks
  LONG count_ = 0;
  ULONG watch_ = 0;  // stays with this array
  bool isMany_ = false;
};
