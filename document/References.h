// What an object refers to, one by one, and who refers to it.
#pragma once

#include "platform/ole/ole.h"

#include <vector>

class CZDocument;
class OID;
struct IZDMObject;
struct IZRelation;

namespace zdm {

enum class ReferenceVia {
  kRelation,   // a relation of the object
  kParameter,  // a parameter: its definition, the one it is linked to, what its value holds
  kPath,       // a step of a path that a relation or a parameter holds
  kCurrent,    // the current object of a manager
};

/// In a word: "relation", "parameter", "path", "current".
const char* NameOf(ReferenceVia via);

/// Borrowed; valid as long as nothing of the object changes.
struct Reference {
  IZDMObject* from;
  OID* to;  // never null; its object may be
  ReferenceVia via;
  IZRelation* relation;  // the outermost one; null for kCurrent and where a value holds none
};

/// In the order of the walk, its owner left out. Relations that are not valid are not walked.
std::vector<Reference> ReferencesOf(IZDMObject* object);

/// The references to `target` of all valid objects, in the order of the ID table. One walk over the
/// document.
std::vector<Reference> ReferencesTo(CZDocument& document, const OID* target);

}  // namespace zdm
