// Gets a document out of a file that cannot be opened any more, and says what became of all of it.
// Three stages: a sound file is opened; of a damaged one every record is taken whose bytes are
// found, through the container's own chains or, where these are gone, by the looks of the bytes.
// What a record says is believed as far as its checksum goes: an object whose owner is not known
// for certain comes under the manager Recovered, never under another one; a record that fits no
// checksum is used only when its object can be loaded. IDs that are known without an object are
// kept, so that references to them are saved again.
#pragma once

#include "document/CZDocument.h"
#include "document/SalvageLedger.h"

#include <filesystem>
#include <span>

namespace zdm {

struct Salvaged {
  ZRefPtr<CZDocument> document;
  SalvageLedger ledger;
};

/// The file stays as it is. A document that had to be salvaged is modified and has no path.
/// @param meter  may be null.
/// Throws DocumentError: kNotDocument when nothing of a document is found, kNewerFormat for a file
/// of a later format, kNotFound, kNoAccess, kNoMemory.
Salvaged Salvage(const std::filesystem::path& path, IZProgressMeter* meter = nullptr);

/// The same for a file's bytes; a sound one is read like a damaged one.
Salvaged Salvage(std::span<const BYTE> file);

}  // namespace zdm
