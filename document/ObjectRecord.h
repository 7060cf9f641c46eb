// One object from its record.
#pragma once

#include "platform/core/IZStream.h"

#include <functional>
#include <span>

class CZDocument;
struct IZDMObject;

namespace zdm {

/// An ID that an object of a file may take: listed, and nobody has it.
bool IsFree(CZDocument& document, LONG id);
/// The object gets the ID, and the record of its owner.
void BindObject(CZDocument& document, LONG id, LONG ownerId, IZDMObject* object);
/// Runs `load` with the object marked as loading. False when it throws CAtlException, but for
/// E_OUTOFMEMORY, which goes on.
bool LoadGuarded(IZDMObject* object, const std::function<void()>& load);

/// Makes the object of `record`, binds it to its ID and its owner and loads it. An object of an
/// absent class, and one that cannot load its own record, is a CZDMAbsentObject that keeps the
/// bytes. The object keeps its creation reference, which COIDManager::SetupOwner gives up.
/// False, and nothing made, for a record that is shorter than its header, says another ID than
/// `id`, or whose ID is not listed or taken.
/// @param offset  where the record begins in `stream`, which is read from there.
bool LoadObject(CZDocument& document, LONG id, ULONG offset, std::span<const BYTE> record,
                IZStream* stream);

}  // namespace zdm
