// Copying objects inside a document, and from one document to another. Copies have extended data,
// relations, parameters and their place in a manager as the originals have, under new IDs; what the
// originals refer to in the set, the copies refer to among themselves.
#pragma once

#include "document/Transfer.h"

namespace zdm {

/// Why an object of the set was not copied. References to it lead out of the set.
enum class CopyObstacle {
  kNotInDocument,  // it is not listed in the source document
  kDocument,       // the document itself
  kNotValid,
  kNoOwner,       // nobody lists it, so there is no place for a copy either
  kNotAvailable,  // its class is not; what its bytes refer to is not known
};

struct CopiedObject {
  IZDMObject* original;
  IZDMObject* copy;
};

struct NotCopied {
  IZDMObject* object;
  CopyObstacle why;
};

struct Copies {
  Refusal refusal = Refusal::kNone;
  std::vector<CopiedObject> objects;   // in the order given, managers with what is below them;
                                       // then definitions that were brought along
  std::vector<NotCopied> leftOut;      // likewise
  std::vector<LeadingOut> leadingOut;  // by object, in that order
};

/// Copies `objects` (null ones passed over) and the valid objects below managers, each once, into
/// the managers that own the originals or their copies. References out of the set are kept; those
/// to what is not there are cut.
Copies Copy(CZDocument& document, const std::vector<IZDMObject*>& objects);

/// The same into another document: where the owner is not of the set, into `manager` (null: the
/// document itself). References out of the set are led to what stands for their target there
/// (Meaning.h), or else cut. Definitions of copied parameters for which nothing stands there are
/// copied too, into the manager of definitions there, and into a copy of their own without one.
Copies CopyTo(CZDocument& source, const std::vector<IZDMObject*>& objects, CZDocument& target,
              IZDMObjMgr* manager = nullptr);

}  // namespace zdm
