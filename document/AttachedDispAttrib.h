// Display attributes of the document's objects stand among their relations, so that they are saved,
// copied and walked with them.
#pragma once

struct IZDMObject;
struct IZDispAttrib;

namespace zdm {

/// The first display attribute among the object's relations (borrowed); null for none.
IZDispAttrib* GetAttachedDispAttrib(IZDMObject& object);

/// Puts `attribute` in the place of that one (one reference); null takes it away.
void AttachDispAttrib(IZDMObject& object, IZDispAttrib* attribute);

}  // namespace zdm
