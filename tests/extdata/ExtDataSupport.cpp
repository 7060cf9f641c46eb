#include "tests/extdata/ExtDataSupport.h"

#include "platform/system/Text.h"

#include <stdexcept>

namespace zdm::test {

ZDM_OBJECT_BODY(Note)

void Note::LoadData(IZStream* stream, IZDatabase*) {
  stream->ReadBSTR(name_.Out());
  number = stream->ReadCount();
  if (number == kUnreadable) throw std::runtime_error("unreadable");
}

void Note::SaveData(IZStream* stream, IZDatabase*) {
  stream->WriteBSTR(name_.Get());
  stream->WriteCount(number);
}

void Note::CopyData(IZExtData* source) {
  const auto* note = dynamic_cast<Note*>(source);
  if (note == nullptr) return;
  name_ = note->name_;  // as it stands in the data, zeros included
  number = note->number;
}

ZRefPtr<IZExtDataAccess> MakeItem(const OLECHAR* name) {
  auto item = NewOf<IZExtDataAccess, CZExtDataObj>();
  item->SetName(name);
  return item;
}

ZRefPtr<IZExtDataAccess> MakeItem(const OLECHAR* name, LONG value) {
  auto item = MakeItem(name);
  item->SetLong(value);
  return item;
}

ZRefPtr<IZExtDataAccess> MakeItem(const OLECHAR* name, IZExtDataCollection* value) {
  auto item = MakeItem(name);
  item->SetCollection(value);
  return item;
}

ZRefPtr<IZExtData> MakeNote(const OLECHAR* name, LONG number) {
  [[maybe_unused]] static const CZRClass* const registered = Note::zInit();
  const auto note = Attached(new Note);
  note->SetName(name);
  note->number = number;
  return static_cast<IZExtData*>(note.Get());
}

ZRefPtr<IZExtDataCollection> MakeItems(std::initializer_list<IZObject*> items) {
  auto coll = NewOf<IZExtDataCollection, CZExtDataCollection>();
  for (IZObject* item : items) coll->AddTail(item);
  return coll;
}

std::string NameOf(IZExtData& item) {
  Bstr name;
  item.GetName(name.Out());
  return name.IsNull() ? "-" : ToUtf8(name.Get());
}

std::string NamesIn(IZExtDataCollection& items) {
  std::string names;
  for (LONGLONG pos = items.GetHeadPosition(); pos != 0;) {
    IZExtData* item = items.GetNext(pos);
    names += (item != nullptr ? NameOf(*item) : "null") + " ";
  }
  return names;
}

IZExtData* At(IZExtDataCollection& items, ULONGLONG index) {
  return items.GetAt(items.FindIndex(index));
}

}  // namespace zdm::test
