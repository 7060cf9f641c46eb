#include "zdm/extdata/CZExtDataCollection.h"

#include "platform/core/IZStream.h"
#include "zdm/extdata/CZExtDataObj.h"
#include "zdm/extdata/CZProxyExtDataObj.h"
#include "zdm/extdata/CustomItemHeader.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/LoadDepth.h"
#include "zdm/framework/Raised.h"

#include <new>
#include <vector>

ZDM_OBJECT_BODY(CZExtDataCollection)

// Here, so that an item which looks at the collection as it goes finds it whole.
CZExtDataCollection::~CZExtDataCollection() { List::RemoveAll(); }

void CZExtDataCollection::Clone(IZExtDataCollection** out) {
  if (out == nullptr) return;
  *out = nullptr;
  auto copy = zdm::NewOf<IZExtDataCollection, CZExtDataCollection>();
  copy->CopyFrom(this);
  *out = copy.Detach();
}

void CZExtDataCollection::CopyFrom(IZExtDataCollection* source) {
  if (source == nullptr || source == static_cast<IZExtDataCollection*>(this)) return;
  const auto copyTo = [source](List& copies) {
    for (LONGLONG pos = source->GetHeadPosition(); pos != 0;) {
      IZExtData* item = source->GetNext(pos);
      if (item == nullptr) continue;
      ZRefPtr<IZExtData> copy;
      item->Clone(copy.Out());
      if (copy != nullptr) copies.AddTail(copy);
    }
  };
  if (List::IsEmpty()) return List::AllOrNothing([&] { copyTo(*this); });
  List copies;
  copyTo(copies);
  List::RemoveAll();
  List::AddTailList(copies);
}

// Collection record, little-endian.
//   size  field
//      4  number of items, signed; below 1 for none
//      ?  the items' own records in list order: see CZExtDataObj.cpp, and for items of other
//         classes, whose first byte is kExtCustom, IZExtDataObjImpl.inl
void CZExtDataCollection::Save(IZStream* stream, IZDatabase* database) {
  if (saving_) {
    stream->WriteCount(0);
    return;
  }
  const zdm::Raised saving(saving_);
  const zdm::LoadDepth nested;            // as deep as it can be read
  std::vector<ZRefPtr<IZExtData>> items;  // as they are now: saving may run any code
  for (POSITION pos = List::GetHeadPosition(); pos != nullptr;) {
    if (IZExtData* item = List::GetNext(pos)) items.emplace_back(item);
  }
  stream->WriteCount(static_cast<LONG>(items.size()));
  for (IZExtData* item : items) item->Save(stream, database);
}

// Nothing is taken on the strength of the count: an item is made when its first byte is read, so a
// count that the stream cannot hold ends in a short read.
void CZExtDataCollection::Load(IZStream* stream, IZDatabase* database) {
  const zdm::LoadDepth nested;
  for (LONG left = stream->ReadCount(); left > 0; --left) {
    BYTE first = 0;
    stream->Read(&first, sizeof(first));
    stream->Seek(-1, STREAM_SEEK_CUR);
    if (first == zdm::kExtCustom) {
      LoadCustomItem(stream, database);
    } else {
      LoadItem(stream, database);
    }
  }
}

void CZExtDataCollection::LoadItem(IZStream* stream, IZDatabase* database) {
  const auto item = zdm::NewOf<IZExtDataAccess, CZExtDataObj>();
  try {
    item->Load(stream, database);
  } catch (...) {
    // With a value already, it is a nested collection that broke off.
    BYTE type = zdm::kExtNone;
    item->GetType(&type);
    if (type != zdm::kExtNone) List::AddTail(ZRefPtr<IZExtData>(item.Get()));
    throw;
  }
  List::AddTail(ZRefPtr<IZExtData>(item.Get()));
}

void CZExtDataCollection::LoadCustomItem(IZStream* stream, IZDatabase* database) {
  const auto start = static_cast<LONGLONG>(stream->GetPosition());
  BYTE tag = zdm::kExtNone;
  GUID classId = GUID_NULL;
  stream->Read(&tag, sizeof(tag));
  stream->Read(&classId, sizeof(classId));
  stream->Seek(start, STREAM_SEEK_SET);
  ZRefPtr<IZExtData> item = zdm::CreateAs<IZExtData>(classId);
  if (item != nullptr) {
    try {
      item->Load(stream, database);
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const CAtlException& failure) {
      if (failure.m_hr == E_OUTOFMEMORY) throw;
      item = nullptr;
    } catch (...) {
      item = nullptr;
    }
    // Whatever it was, the bytes are still there.
    if (item == nullptr) stream->Seek(start, STREAM_SEEK_SET);
  }
  if (item == nullptr) {
    item = zdm::NewOf<IZExtData, CZProxyExtDataObj>();
    item->Load(stream, database);
  }
  List::AddTail(item);
}
