// Short words for tests of ID records: records and tables without objects, bytes written and read.
#pragma once

#include "platform/ole/CAtlException.h"
#include "tests/support/ByteStream.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <memory>
#include <vector>

namespace zdm::test {

/// 32-bit numbers as they stand in a stream.
inline std::vector<BYTE> Words(std::initializer_list<LONG> words) {
  std::vector<BYTE> bytes(words.size() * sizeof(LONG));
  if (!bytes.empty()) std::memcpy(bytes.data(), std::data(words), bytes.size());
  return bytes;
}

/// The bytes that `save`, called with a stream, writes.
template <class Save>
std::vector<BYTE> Written(Save save) {
  ByteStream stream;
  save(&stream);
  return stream.GetBytes();
}

/// Loads every part of `bytes` that ends early: `load` must throw E_FAIL.
template <class Load>
void ExpectShortStreamsThrow(const std::vector<BYTE>& bytes, Load load) {
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    ByteStream stream(std::vector<BYTE>(bytes.begin(), bytes.begin() + static_cast<LONG>(size)));
    try {
      load(&stream);
      ADD_FAILURE() << "loaded from " << size << " bytes";
    } catch (const CAtlException& failure) {
      EXPECT_EQ(failure.m_hr, E_FAIL) << size << " bytes";
    }
  }
}

/// A new record in the table, without object; the table keeps it.
inline OID* ListRecord(COIDManager& table, LONG id) {
  auto* record = new OID(0, 0, id, nullptr);
  table.AddOID(record);
  return record;
}

inline std::vector<LONG> IDsOf(const std::vector<OID*>& records) {
  std::vector<LONG> ids;
  for (const OID* record : records) ids.push_back(record->ID);
  return ids;
}

}  // namespace zdm::test
