// A visitor that finds what depends on objects that are marked as affected (ZOS_AFFECTED). Adds no
// operation: the caller marks what has changed, then asks each object of interest with
// object->VisitReferences(root, visitor). Every object on the chain of references that leads to a
// marked one, and the root, is marked then, and the answer is true.
// Every object entered keeps ZOS_DEDUCEVISITED and is not searched again; the caller clears both
// bits when they are no longer needed.
#pragma once

#include "zdm/relations/IZReltnVisitor.h"

struct ZDM_INTERFACE IZReltnDeduce : IZReltnVisitor {};
