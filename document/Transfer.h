// What copying and merging have in common: a set of objects of one document gets copies, or takes
// over others, in the same or in another one. First everything is made, listed and led over, then
// put in place; what fails leaves both documents as they were. Managers come without their objects:
// these are named one by one.
#pragma once

#include "document/PointerMap.h"
#include "document/ReferenceFate.h"
#include "document/References.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/model/IZDMObjMgr.h"

#include <vector>

class CZDocument;

namespace zdm {

class Meanings;

/// Why nothing was done at all.
enum class Refusal {
  kNone,
  kSameDocument,  // source and target are one
  kClosing,       // one of the documents is being closed
  kNotInTarget,   // the manager named is not of the target document
};

/// The reference of an object of the set to a record outside.
struct LeadingOut {
  IZDMObject* from;  // of the set, not its copy
  OID* to;           // as `from` refers to it
  ReferenceVia via;
  ReferenceFate fate;
};

/// A copy can be made: the class is there, and all that its bytes refer to is known.
bool IsCopyable(IZDMObject* object);
/// Its record has an object that is valid and not deleted.
bool IsAlive(const OID* record);
/// The object is listed in the document's ID table.
bool IsListedIn(CZDocument& document, IZDMObject* object);
Refusal JudgeDocuments(const CZDocument& source, const CZDocument& target);

class Transfer {
 public:
  /// What references to the outside are led to.
  enum class Outside {
    kStays,  // what they refer to, as long as that is there
    kCut,    // nothing
  };

  /// @param meanings  of the target; where given, references to what stands for the same thing
  ///     there are led to that. Outlives the transfer.
  Transfer(CZDocument& target, Outside outside, const Meanings* meanings = nullptr)
      : target_(target), outside_(outside), meanings_(meanings) {}

  /// For so many objects to come.
  void Reserve(std::size_t count);
  /// `original` gets a copy in the manager that stands for its owner, or else in `fallback`.
  void Copy(IZDMObject* original, IZDMObjMgr* fallback);
  /// `counterpart`, of the target document, takes over the data of `original`.
  void Replace(IZDMObject* original, IZDMObject* counterpart);
  /// References to `record` are led to `counterpart`.
  void LeadTo(const OID* record, OID* counterpart, ReferenceFate fate);

  /// References to `record` are led somewhere: inside, or to a counterpart.
  bool IsLed(const OID* record) { return Find(record) != nullptr; }

  /// The references of the objects named so far that lead out, in their order. Changes nothing.
  std::vector<LeadingOut> FindLeadingOut();
  /// Does it all. The copies are in the order of the calls of Copy.
  /// @param leadingOut  receives what FindLeadingOut would have answered; may be null.
  std::vector<IZDMObject*> CarryOut(std::vector<LeadingOut>* leadingOut = nullptr);

 private:
  class Mapper;
  class Rollback;
  struct Item {
    IZDMObject* original;
    IZDMObject* counterpart;  // null for one that is copied
    IZDMObjMgr* fallback;
  };
  struct Destination {
    OID* record = nullptr;  // null until the copy is made
    ReferenceFate fate = ReferenceFate::kKept;
    bool isInside = false;
  };

  IZDMObjMgr* ManagerFor(const Item& item);
  const Destination* Find(const OID* record);
  IZDMObject* Make(const Item& item, Rollback& work);
  static void MakeRoom(std::vector<LeadingOut>& leadingOut, std::size_t items);

  static constexpr std::size_t kSample = 64;

  CZDocument& target_;
  const Outside outside_;
  const Meanings* const meanings_;
  std::vector<Item> items_;
  PointerMap<Destination> destinations_;  // by the record referred to
};

}  // namespace zdm
