// What objects and paths have in common: a 32-bit ID and two operations on status bits.
// Hard IDs are negative and go down from -2, soft IDs are positive and go up from 1; 0 is no ID and
// -1 the root of the document. Copying copies the ID.
#pragma once

#include "platform/core/SmallBlocks.h"
#include "platform/ole/ole.h"

class ZDM_API KID : public zdm::InBlocks<zdm::BlockKind::kRecord> {
 public:
  explicit KID(LONG id = 0) : ID(id) {}
  KID(const KID&) = default;
  KID& operator=(const KID&) = default;
  virtual ~KID() = default;  // 0
  /// Sets a status bit. `key` is that of the status lock's holder, see OID. Does nothing here.
  virtual void SetStatus(const LONG& status, ULONGLONG key);    // 1
  virtual void ClearStatus(const LONG& status, ULONGLONG key);  // 2

  LONG ID;
};
