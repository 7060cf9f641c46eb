// Embedded objects and proxies in the document's file. Their headers differ from those of all other
// objects, so each stands in a frame that says what it is and how long.
#pragma once

#include "platform/core/IZStream.h"

#include <span>
#include <typeinfo>
#include <unordered_set>

class CZDocument;
struct IZDMObject;

namespace zdm {

enum class FrameKind : BYTE {
  kNone = 0,      // an object with the common header
  kProxy = 1,     // CZDMProxyObject
  kEmbedded = 2,  // CZDMObjEmbed
};

FrameKind FrameKindOf(IZDMObject* object);

/// FrameKindOf for many objects: of a class whose objects have none, only the first one is looked
/// at closely.
class FrameKinds {
 public:
  FrameKind Of(IZDMObject* object);

 private:
  std::unordered_set<const std::type_info*> frameless_;
};

/// Writes the frame of an object whose kind is not kNone.
void SaveFrame(CZDocument& document, IZDMObject* object, IZStream* stream);

/// Makes the object of `frame`, binds it and loads it; as LoadObject otherwise. An embedded object
/// whose extension cannot be made or read becomes a CZDMAbsentObject.
bool LoadFrame(CZDocument& document, LONG id, std::span<const BYTE> frame);

}  // namespace zdm
