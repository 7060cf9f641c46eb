// Short words for tests of ID records: a document, records and tables without objects.
#pragma once

#include "tests/support/Bytes.h"
#include "tests/support/TestDatabase.h"
#include "zdm/framework/IZObjectImpl.h"
#include "zdm/host/IZProgressMeter.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"

#include <memory>
#include <vector>

namespace zdm::test {

/// A test document as fixtures hold it: declared before the objects in it.
class Document {
 public:
  TestDatabase* operator->() const { return database_.get(); }
  operator TestDatabase*() const { return database_.get(); }

 private:
  std::unique_ptr<TestDatabase> database_ = std::make_unique<TestDatabase>();
};

/// Notes what it is told.
struct Meter : IZObjectImpl<IZProgressMeter> {
  void SetRange(LONG newRange) override { range = newRange; }
  void Step(LONG taken) override { steps += taken; }
  LONG range = -1;
  LONG steps = 0;
};

/// A new record in the table, without object; the table keeps it.
inline OID* ListRecord(COIDManager& table, LONG id) {
  auto* record = new OID(0, 0, id, nullptr);
  table.AddOID(record);
  return record;
}

inline std::vector<LONG> IDsOf(const std::vector<OID*>& records) {
  std::vector<LONG> ids;
  ids.reserve(records.size());
  for (const OID* record : records) ids.push_back(record->ID);
  return ids;
}

}  // namespace zdm::test
