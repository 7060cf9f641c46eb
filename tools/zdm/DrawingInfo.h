// What info says of the drawing of a document.
#pragma once

#include "tools/zdm/Output.h"

class CZDocument;

namespace zdm::tool {

/// Of the file that the drawing began as, and the counts of Count; empty without a drawing.
Json DrawingInfo(CZDocument& document);

}  // namespace zdm::tool
