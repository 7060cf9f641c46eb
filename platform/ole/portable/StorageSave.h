// Puts a tree of elements in place of the file at a path, so that at any moment the old or the new
// file is there, whole.
#pragma once

#include <string>

#include "platform/ole/portable/StorageTree.h"

namespace zdm {

/// Writes a new file beside `path` and renames it over. `flush`: when this returns, the bytes and
/// the name are on the disk. After a failure the old file is untouched and nothing is left behind.
/// STG_E_CANTSAVE for a storage with more than StorageTree::kMaxElements elements.
HRESULT SaveTree(const StorageTree& tree, const std::string& path, bool flush);

}  // namespace zdm
