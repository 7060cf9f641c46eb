// The relations that stand for groups of an object: to the layer, to a block by its name, to other
// objects by their handles. Those of blocks and handles carry the place of their group as their
// tag.
#pragma once

#include "drawing/DrawingPart.h"
#include "drawing/TextCodec.h"

#include <map>
#include <string>

struct IZDMObject;
struct IZSingleReltn;

namespace zdm {

/// The relation for the group at `index` (borrowed); null without one.
IZSingleReltn* RelationOf(IZDMObject& object, ULONG index);
/// Adds one.
/// @param hard  `target` is not deleted while `object` is there.
void RelateGroup(IZDMObject& object, ULONG index, IZDMObject* target, bool hard);

/// Texts in place of those at some places among the groups of an object.
using GroupEdits = std::map<ULONG, std::string>;

/// What differs between the groups as they were read and what the relations and the name of the
/// object say now.
void CollectRelationEdits(IZDMObject& object, const DrawingPart& part, const TextCodec& codec,
                          GroupEdits* edits);

}  // namespace zdm
