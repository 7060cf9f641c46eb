#include "zdm/properties/CZPropertyIndex.h"

#include "platform/core/IZStream.h"
#include "zdm/properties/PropertyType.h"

ZDM_OBJECT_BODY(CZPropertyIndex)

CZPropertyIndex::CZPropertyIndex() { record_.type = zdm::kPropertyIndex; }

void CZPropertyIndex::CopyFrom(IZProperty* source) {
  if (TakeFrom(source)) entries_.Add(static_cast<CZPropertyIndex&>(*source).entries_);
}

ULONG CZPropertyIndex::GetIndex() const {
  return Holds(VT_I2) ? static_cast<USHORT>(record_.value.Get().iVal) : 0xFFFFFFFF;
}

bool CZPropertyIndex::GetEntryText(ULONG index, BSTR* label) {
  return entries_.FindLabel([&](ULONG own) { return own == index; }, label);
}

void CZPropertyIndex::AddEntry(ULONG index, const OLECHAR* label) {
  entries_.Add(index, zdm::Bstr(label));
}

// Index property record, little-endian.
//   size  field
//      ?  the property's record: see PropertyRecord.cpp
//      4  number of entries, signed; below 1 for none
//  then for each entry
//      4  index
//      ?  label, as IZStream::WriteBSTR writes it
void CZPropertyIndex::Save(IZStream* stream) {
  record_.Save(stream);
  stream->WriteCount(static_cast<LONG>(entries_.GetCount()));
  entries_.ForEach([&](ULONG index, const zdm::Bstr& label) {
    stream->Write(&index, sizeof(index));
    stream->WriteBSTR(label.Get());
  });
}

void CZPropertyIndex::Load(IZStream* stream) {
  constexpr ULONGLONG kSmallestEntry = 8;  // index 4, length of the label 4
  Record record;
  record.Load(stream);
  LONG left = stream->ReadCount();
  if (left > 0 && static_cast<ULONGLONG>(left) > stream->GetBytesLeft() / kSmallestEntry) {
    throw CAtlException(E_FAIL);
  }
  zdm::LabelledEntries<ULONG> entries;
  for (; left > 0; --left) {
    ULONG index = 0;
    stream->Read(&index, sizeof(index));
    zdm::Bstr label;
    stream->ReadBSTR(label.Out());
    entries.Add(index, std::move(label));
  }
  entries_.Add(entries);
  record_ = std::move(record);
}
