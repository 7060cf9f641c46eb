// A display attribute: the values with which something is shown. A relation of the host without
// operations of its own; the library copies, compares, stores and validates it as such.
// A host's class answers CopyFrom with any IZDispAttrib by taking over its values (null changes
// nothing) and JudgeSame by comparing values (false for null).
#pragma once

#include "zdm/relations/IZRelation.h"

struct ZDM_INTERFACE IZDispAttrib : IZRelation {};
