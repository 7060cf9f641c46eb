#include "drawing/Parameters.h"

namespace zdm {

void Parameters::Make(IZDMObject&, ULONG) {}

void CollectParameterEdits(IZDMObject&, const DrawingPart&, const TextCodec&, GroupEdits*) {}

}  // namespace zdm
