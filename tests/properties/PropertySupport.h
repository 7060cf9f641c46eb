// Short words for tests of properties.
#pragma once

#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"
#include "tests/support/ByteStream.h"
#include "tests/support/Bytes.h"
#include "tests/support/Thrown.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZProperty.h"

#include <string>
#include <vector>

namespace zdm::test {

/// A GUID for each number.
constexpr GUID Key(BYTE number) {
  return {0x11111111, 0x2222, 0x3333, {0x44, 0x44, 0x55, 0x55, 0x55, 0x55, 0x55, number}};
}

inline ZRefPtr<IZProperty> MakeProperty() { return NewOf<IZProperty, CZProperty>(); }

/// What an operation hands out in a BSTR; "-" for null.
template <class Ask>
std::string TextOf(Ask ask) {
  Bstr text;
  ask(text.Out());
  return text.IsNull() ? "-" : ToUtf8(text.Get());
}

inline std::string NameOf(IZProperty* property) {
  return TextOf([&](BSTR* out) { property->GetName(out); });
}

inline std::string DisplayNameOf(IZProperty* property) {
  return TextOf([&](BSTR* out) { property->GetDisplayName(out); });
}

inline Bytes Saved(IZProperty* property) {
  ByteStream stream;
  property->Save(&stream);
  return stream.GetBytes();
}

/// The result of loading.
inline HRESULT Load(IZProperty* property, Bytes bytes) {
  ByteStream stream(std::move(bytes));
  return Thrown([&] { property->Load(&stream); });
}

/// The elements of any list of properties.
template <class Coll>
std::vector<IZProperty*> Members(Coll* coll) {
  std::vector<IZProperty*> members;
  for (LONGLONG pos = coll->GetHeadPosition(); pos != 0;) members.push_back(coll->GetNext(pos));
  return members;
}

}  // namespace zdm::test
