// The groups of an object as they are to be written: as they were read, but for what its relations,
// its name, its parameters and its extended data say otherwise by now.
#pragma once

#include "drawing/ExtendedData.h"

namespace zdm {

struct WrittenRecord {
  GroupList head;  // in front of the objects held
  GroupList tail;  // behind them
};

WrittenRecord WrittenGroups(IZDMObject& object, const DrawingPart& part, const TextCodec& codec,
                            const Applications& applications = {});

}  // namespace zdm
