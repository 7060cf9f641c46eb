// An array of parameters with its owner, for tests.
#pragma once

#include "tests/parameters/ParameterSupport.h"
#include "zdm/parameters/CZParameterArray.h"
#include "zdm/properties/GUID_UNSET.h"

#include <gtest/gtest.h>

namespace zdm::test {

inline ZRefPtr<IZParameterArray> MakeArray() {
  return MakeObject<IZParameterArray, CZParameterArray>();
}

/// The last bytes of the definitions' keys; "-" for a parameter without definition.
inline std::string KeysIn(IZParameterArray* array) {
  std::string keys;
  for (LONG i = 0; i < array->GetCount(); ++i) {
    const GUID key = KeyOf(array->GetAt(i));
    keys += (keys.empty() ? "" : " ") +
            (key == GUID_UNSET ? std::string("-") : std::to_string(key.Data4[7]));
  }
  return keys;
}

class ParameterArray : public testing::Test {
 protected:
  ParameterArray() { owner->SetParameterArray(array, false); }

  /// Adds a number of its own for each definition, in one bulk add.
  void Add(const std::vector<BYTE>& keys, IZParameterArray* to, double value = 0) {
    to->BeginAdd();
    for (const BYTE key : keys) to->AddDoubleParameter(db.manager, At(key), key, value + key, 0);
    to->EndAdd();
  }
  void Add(const std::vector<BYTE>& keys) { Add(keys, array); }

  /// The key of that number, with a definition of it.
  const GUID* At(BYTE number) {
    if (db.manager->FindDefinition(&(key_ = Key(number))) == nullptr) db.Make(number);
    return &key_;
  }

  Definitions db;
  ZRefPtr<Notified> owner = MakeObject<Notified, Notified>();
  ZRefPtr<IZParameterArray> array = MakeArray();

 private:
  GUID key_ = {};
};

}  // namespace zdm::test
