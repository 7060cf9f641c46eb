#include "zdm/extdata/CZExtDataMgr.h"

#include "platform/core/IZStream.h"
#include "platform/ole/Bstr.h"
#include "zdm/extdata/CZExtDataCollection.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/GuidKey.h"

#include <memory>
#include <utility>

ZDM_OBJECT_BODY(CZExtDataMgr)

namespace {

ZRefPtr<IZExtDataCollection> NewCollection() {
  return zdm::NewOf<IZExtDataCollection, CZExtDataCollection>();
}

}  // namespace

bool CZExtDataMgr::KeyOrder::operator()(const GUID& left, const GUID& right) const {
  return zdm::GuidKey(left) < zdm::GuidKey(right);
}

CZExtDataMgr::~CZExtDataMgr() { CZExtDataMgr::RemoveAll(); }

IZExtDataCollection* CZExtDataMgr::GetCollection(const GUID& key) {
  const auto found = groups_.find(key);
  return found != groups_.end() ? found->second.Get() : nullptr;
}

IZExtDataCollection* CZExtDataMgr::QueryCollection(const GUID& key) {
  if (IZExtDataCollection* present = GetCollection(key)) return present;
  return groups_.emplace(key, NewCollection()).first->second;
}

// What goes may run any code as it does, so it goes when the map is whole again.
void CZExtDataMgr::RemoveCollection(const GUID& key) { const auto gone = groups_.extract(key); }

void CZExtDataMgr::RemoveAll() { const Groups gone = std::exchange(groups_, {}); }

void CZExtDataMgr::Clone(IZExtDataMgr** out) {
  if (out == nullptr) return;
  *out = nullptr;
  auto copy = zdm::NewOf<IZExtDataMgr, CZExtDataMgr>();
  // Cloning may run any code, so each group is looked for anew.
  for (auto at = groups_.begin(); at != groups_.end();) {
    const auto [key, items] = *at;
    copy->QueryCollection(key)->CopyFrom(items);
    at = groups_.upper_bound(key);
  }
  *out = copy.Detach();
}

// Manager record, little-endian.
//   offset  size  field
//        0     4  number of groups, signed; below 1 for none
//   then for each group in key order
//        0    16  key
//       16     ?  collection record
void CZExtDataMgr::Save(IZStream* stream, IZDatabase* database) {
  if (stream == nullptr) return;
  const Groups groups = groups_;  // as they are now: saving may run any code
  stream->WriteCount(static_cast<LONG>(groups.size()));
  for (const auto& [key, items] : groups) {
    stream->Write(&key, sizeof(key));
    items->Save(stream, database);
  }
}

void CZExtDataMgr::Load(IZStream* stream, IZDatabase* database) {
  if (stream == nullptr) return;
  for (LONG left = stream->ReadCount(); left > 0; --left) {
    GUID key = GUID_NULL;
    stream->Read(&key, sizeof(key));
    const ZRefPtr<IZExtDataCollection> items = NewCollection();
    try {
      items->Load(stream, database);
    } catch (...) {
      groups_.try_emplace(key, items);
      throw;
    }
    groups_[key] = items;
  }
}

void CZExtDataMgr::GetKeys(SAFEARRAY** out) {
  if (out == nullptr) throw CAtlException(E_POINTER);
  *out = nullptr;
  const auto destroy = [](SAFEARRAY* array) { SafeArrayDestroy(array); };
  std::unique_ptr<SAFEARRAY, decltype(destroy)> keys(
      SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(groups_.size())), destroy);
  if (keys == nullptr) throw CAtlException(E_OUTOFMEMORY);
  LONG index = 0;
  for (const auto& [key, items] : groups_) {
    OLECHAR text[39];
    StringFromGUID2(key, text, 39);
    const HRESULT result = SafeArrayPutElement(keys.get(), &index, zdm::Bstr(text).Get());
    if (FAILED(result)) throw CAtlException(result);
    ++index;
  }
  *out = keys.release();
}
