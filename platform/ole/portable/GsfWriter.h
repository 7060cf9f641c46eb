// Writes a tree of elements as a compound file, through libgsf.
// The same tree gives the same bytes: elements in directory order, no times.
#pragma once

#include "platform/ole/portable/StorageTree.h"

#include <cstdio>

namespace zdm {

/// Writes the tree below `root` to `file`, from its start; flushes but does not close it.
/// STG_E_WRITEFAULT or STG_E_MEDIUMFULL when bytes could not be written, else what reading gave.
HRESULT WriteWithGsf(const StorageNode& root, std::FILE* file);

}  // namespace zdm
