// Puts a tree of elements in place of the file at a path, so that at any moment the old or the new
// file is there, whole.
#pragma once

#include "platform/ole/portable/StorageTree.h"

#include <string>

namespace zdm {

/// Finds where the file `path` names lies, or would lie: absolute and without links, so that
/// neither another working folder nor a turned link leads elsewhere later. STG_E_ACCESSDENIED for a
/// link to nothing.
HRESULT ResolveTarget(const std::string& path, std::string* file);

/// Whether a file may be put at the resolved path `file`: in place of nothing or of a regular file
/// that may be written, in a folder that may be written. STG_E_ACCESSDENIED; STG_E_PATHNOTFOUND.
HRESULT CheckTarget(const std::string& file);

/// Writes a new file beside the resolved path `file` and renames it over. The new file takes on the
/// access rights of the old one, and its owner where that is allowed; what else hangs on the old
/// one (access lists, extended attributes, other hard links) stays with that. `flush`: when this
/// returns, the bytes and the name are on the disk. After a failure no half file is left: the old
/// one is still in place, or, when only the last flush failed, the new one. STG_E_CANTSAVE for a
/// storage with more than StorageTree::kMaxElements elements, STG_E_DOCFILETOOLARGE for a stream
/// longer than StreamContent::kMaxSize; else as CheckTarget.
HRESULT SaveTree(const StorageTree& tree, const std::string& file, bool flush);

}  // namespace zdm
