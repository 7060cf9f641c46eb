// The pooled paths of a document, each with what it leads to.
#pragma once

#include "document/Document.h"
#include "tools/zdm/Commands.h"

namespace zdm::tool {

void PrintPaths(const Context& context, const Document& document);

}  // namespace zdm::tool
