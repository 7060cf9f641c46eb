// Items, and short words for tests of extended data.
#pragma once

#include "tests/support/ByteStream.h"
#include "tests/support/Bytes.h"
#include "tests/support/TestClasses.h"
#include "tests/support/Thrown.h"
#include "zdm/extdata/CZExtDataCollection.h"
#include "zdm/extdata/CZExtDataMgr.h"
#include "zdm/extdata/CZExtDataObj.h"
#include "zdm/extdata/CZProxyExtDataObj.h"

#include <string>

namespace zdm::test {
class Note;
}

ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::Note, "7E570000-0000-4000-8000-000000000301",
              IZObject, IZExtData)

namespace zdm::test {

/// A host's item: its name and a number, of which it refuses to load kUnreadable.
class Note : public IZExtDataObjImpl<IZExtData> {
  ZDM_OBJECT(Note)
 public:
  static constexpr LONG kUnreadable = 0x0BAD;

  Note() { ++alive; }
  ~Note() override { --alive; }
  void LoadData(IZStream* stream, IZDatabase* database) override;
  void SaveData(IZStream* stream, IZDatabase* database) override;
  void CopyData(IZExtData* source) override;

  LONG number = 0;
  inline static int alive = 0;
};

ZRefPtr<IZExtDataAccess> MakeItem(const OLECHAR* name);
ZRefPtr<IZExtDataAccess> MakeItem(const OLECHAR* name, LONG value);
ZRefPtr<IZExtDataAccess> MakeItem(const OLECHAR* name, IZExtDataCollection* value);
/// Registers the class.
ZRefPtr<IZExtData> MakeNote(const OLECHAR* name, LONG number);
ZRefPtr<IZExtDataCollection> MakeItems(std::initializer_list<IZObject*> items);

/// "-" for none.
std::string NameOf(IZExtData& item);
/// Names from head to tail, each followed by a blank; "null" for a null element.
std::string NamesIn(IZExtDataCollection& items);
/// The item at place `index` (borrowed).
IZExtData* At(IZExtDataCollection& items, ULONGLONG index);

template <class T>
Bytes Saved(T& what) {
  ByteStream stream;
  what.Save(&stream, nullptr);
  return stream.GetBytes();
}

/// The result of loading; `read` takes the number of bytes read.
template <class T>
HRESULT Load(T& what, Bytes bytes, ULONGLONG* read = nullptr) {
  ByteStream stream(std::move(bytes));
  const HRESULT result = Thrown([&] { what.Load(&stream, nullptr); });
  if (read != nullptr) *read = stream.GetPosition();
  return result;
}

}  // namespace zdm::test
