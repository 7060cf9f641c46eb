// What an extended-data item holds: the first byte of its record, and what GetType answers.
#pragma once

#include "platform/ole/ole.h"

namespace zdm {

enum ExtDataType : BYTE {
  kExtNone = 0,  // a new item
  kExtByte = 1,
  kExtShort = 2,
  kExtFloat = 3,
  kExtLong = 4,
  kExtULong = 5,
  kExtDouble = 6,
  kExtString = 7,
  kExtBool = 8,
  kExtCollection = 9,
  kExtObject = 10,  // not stored
  kExtCustom = 20,  // the record of an item of another class; no value type
};

}  // namespace zdm
