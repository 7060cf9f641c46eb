// A stored ID table: what of it is read is found by its IDs, and written back as it came.
#include "fuzz/Fuzz.h"
#include "tests/support/ByteStream.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"

#include <algorithm>
#include <cstring>

namespace {

using namespace zdm::test;

/// The next ID of a kind; 0 when all are taken.
template <class Query>
LONG Next(Query query) {
  LONG id = 0;
  Loads([&] { id = query(); });
  return id;
}

}  // namespace

ZDM_FUZZ(bytes) {
  COIDManager table;
  table.Init();
  ByteStream in(bytes);
  const bool isComplete = table.Load(&in);
  LONG count = 0;
  if (bytes.size() >= sizeof(count)) std::memcpy(&count, bytes.data(), sizeof(count));
  const std::vector<OID*> read = table.GetOIDs();
  Require(read.size() <= bytes.size() / 12);
  Require(isComplete == (bytes.size() >= sizeof(count) && count >= 0 &&
                         read.size() == static_cast<std::size_t>(count)));
  std::size_t entry = sizeof(count);
  for (const OID* record : read) {
    const LONG words[] = {record->AuxWord1, record->AuxWord2, record->ID};
    Require(std::memcmp(&bytes[entry], words, sizeof(words)) == 0);
    entry += sizeof(words);
  }

  table.ReSort();
  const std::vector<OID*>& sorted = table.GetOIDs();
  Require(sorted.size() == read.size());
  for (std::size_t i = 1; i < sorted.size(); ++i) Require(sorted[i - 1]->ID <= sorted[i]->ID);
  for (const OID* record : sorted) {
    const OID* found = table.GetOIDByID(record->ID);
    if (record->ID != 0 && record->ID != -1) Require(found != nullptr && found->ID == record->ID);
  }
  const LONG hard = Next([&] { return table.QueryHardID(); });
  const LONG soft = Next([&] { return table.QuerySoftID(); });
  for (const OID* record : sorted) Require(hard == 0 || record->ID > hard);
  for (const OID* record : sorted) Require(soft == 0 || record->ID < soft);
  for (OID* record : read) table.Remove(record);
  Require(table.GetOIDs().empty());
}
