// What a merge does with a source object that has a counterpart in the target document.
#pragma once

#include "platform/ole/ole.h"

enum eZMergeOption : BYTE {
  ZMO_SAME = 1,     // the two are one object: references to the source go to the target
  ZMO_REPLACE = 2,  // as ZMO_SAME, and the target takes over the source's data; not for managers
  ZMO_ADD = 3,      // the source is copied into the target document with new IDs
  ZMO_MERGE = 4     // as ZMO_SAME, and the contents are merged; only for managers
};
