// The stored header of every data-model object, as it stands in a stream: 41 bytes, packed,
// little-endian.
//   offset  size  field
//        0    16  class identifier
//       16     4  the record's AuxWord1
//       20     4  the record's AuxWord2
//       24     4  the object's ID
//       28     4  the owner's ID, 0 without an owner
//       32     1  type byte, see IZDatabase::CreateByType
//       33     8  option mask
#pragma once

#include "platform/ole/ole.h"

namespace zdm {

#pragma pack(push, 1)
struct ObjectHeader {
  GUID classId;
  LONG auxWord1;
  LONG auxWord2;
  LONG id;
  LONG ownerId;
  BYTE type;
  LONGLONG options;
};
#pragma pack(pop)
static_assert(sizeof(ObjectHeader) == 41);

}  // namespace zdm
