// Hostile bytes as the record of a proxy (first byte even) or of an embedded object without
// extension (odd): header, embedded record, and for the proxy raw data. What loads is saved to
// bytes that load to the same bytes again.
#include "fuzz/Fuzz.h"
#include "tests/support/TestDatabase.h"
#include "zdm/model/CZDMObjEmbed.h"
#include "zdm/model/CZDMProxyObject.h"

namespace {

using namespace zdm::test;

void LoadProxy(CZDMProxyObject& proxy, IZStream* stream, TestDatabase& db) {
  proxy.ReadHeader(stream);
  proxy.LoadEmbedded(stream, &db);
  proxy.LoadRawData(stream, &db);
}

std::vector<BYTE> SavedProxy(CZDMProxyObject& proxy, TestDatabase& db) {
  ByteStream stream;
  proxy.WriteHeader(&stream);
  proxy.SaveEmbedded(&stream, &db);
  void* data = nullptr;
  const LONG length = proxy.GetData(&data);
  stream.Write(&length, sizeof(length));
  proxy.SaveOwnData(&stream, &db);
  CoTaskMemFree(data);
  return stream.GetBytes();
}

/// Relations whose own records are not written again as they were read: objects, which write
/// nothing unless they are valid, and collections, which leave out what is not.
bool HoldsMore(CZDMProxyObject& proxy) {
  const auto relations = zdm::NewRelations();
  proxy.CollectRelations(ZR_ALL, relations);
  for (LONGLONG pos = relations->GetHeadPosition(); pos != 0;) {
    if (zdm::ViewAs<IZSingleReltn>(relations->GetNext(pos)) == nullptr) return true;
  }
  return false;
}

void TryProxy(const std::vector<BYTE>& bytes) {
  TestDatabase db;
  auto proxy = zdm::Attached(new CZDMProxyObject);
  ByteStream stream(bytes);
  const bool loads = Loads([&] { LoadProxy(*proxy, &stream, db); });
  const auto copy = zdm::CloneAs<IZDMObject>(proxy->GetIZObject());
  const std::vector<BYTE> saved = SavedProxy(*proxy, db);
  auto* twin = dynamic_cast<CZDMProxyObject*>(copy.Get());
  Require(twin != nullptr);
  if (!loads || HoldsMore(*proxy)) return;
  // Of a relation's record the copy leaves out the spare word.
  Require(SavedProxy(*twin, db).size() == saved.size());
  ByteStream again(saved);
  Require(Loads([&] { LoadProxy(*twin, &again, db); }));
  Require(again.GetBytesLeft() == 0 && SavedProxy(*twin, db) == saved);
}

void TryEmbedded(const std::vector<BYTE>& bytes) {
  TestDatabase db;
  auto embed = zdm::Attached(new CZDMObjEmbed);
  ByteStream stream(bytes);
  Loads([&] {
    embed->ReadHeader(&stream);
    embed->LoadEmbedded(&stream, &db);
    embed->LoadBody(&stream, &db);
  });
  embed->AssertValid(&db);
  embed->JudgeStoredRelations();
  ByteStream saved;
  embed->SaveEmbedded(&saved, &db);
  const std::vector<BYTE> first = saved.GetBytes();
  saved.Seek(0, STREAM_SEEK_SET);
  embed->LoadEmbedded(&saved, &db);
  ByteStream again;
  embed->SaveEmbedded(&again, &db);
  Require(again.GetBytes() == first);
}

}  // namespace

ZDM_FUZZ(bytes) {
  if (bytes.empty()) return;
  (bytes[0] % 2 == 0 ? TryProxy : TryEmbedded)({bytes.begin() + 1, bytes.end()});
}
