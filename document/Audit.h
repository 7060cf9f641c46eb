// Looks through an open document for what is not as it should be, and repairs what can be repaired
// without guessing. Extended data under keys that nobody knows is never a finding.
#pragma once

#include "platform/ole/ole.h"

#include <string>
#include <vector>

class CZDocument;

namespace zdm {

enum class FindingCode {
  kIDsUnsorted,         // the ID table is not ascending
  kIDDoubled,           // two records with one ID
  kNoObject,            // a listed record without an object, that nobody refers to; not saved
  kNoManager,           // a valid object in no manager's list
  kManyManagers,        // an object in the lists of more than one manager, or twice in one
  kOwnerDisagrees,      // in the list of a manager that is not its owner
  kOwnerCycle,          // owners that lead back to the object and never to the document
  kReferenceToNothing,  // the target's record has no object
  kReferenceToInvalid,  // the target is there and not valid
  kReferenceToDeleted,  // the target is marked deleted
  kPathUnresolved,      // a path leads through a record without an object
  kAbsentClass,         // the object's class is not available; its bytes are kept
  kCounterBehind,       // the next new ID is taken
};

enum class Severity { kNote, kWarning, kError };

struct Finding {
  FindingCode code;
  Severity severity;
  LONG object;        // ID; 0 for the document as a whole
  std::string place;  // where in the object, for people
  bool canBeRepaired;
};

/// The stable name of a code, such as "owner-cycle".
const char* NameOf(FindingCode code);
const char* NameOf(Severity severity);

/// In the order of the codes, then of the ID table. Changes nothing.
std::vector<Finding> Audit(CZDocument& document);

/// Repairs what Audit says can be repaired: the table is sorted; the second record of an ID gets a
/// new one; objects without a manager, and one of each ring of owners, come under the manager
/// "Recovered"; lists and owners are made to agree. Sound objects are left alone, and so is all of
/// a document without such findings.
/// @return  what was repaired.
std::vector<Finding> Repair(CZDocument& document);

}  // namespace zdm
