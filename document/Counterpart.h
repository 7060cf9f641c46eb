// When objects of two documents count as the same.
#pragma once

struct IZDMObject;

namespace zdm {

/// True for two objects of one class and one ID, other than 0, in two different documents.
bool AreCounterparts(IZDMObject& left, IZDMObject& right);

}  // namespace zdm
