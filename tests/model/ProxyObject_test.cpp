// Proxies: the bytes they keep of objects whose class is not there.
#include "tests/model/ModelSupport.h"
#include "tests/support/Cuts.h"
#include "tests/support/SlotOf.h"
#include "zdm/model/CZDMProxyObject.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

constexpr GUID kForeign = {0x11111111, 0x2222, 0x3333, {4, 4, 4, 4, 4, 4, 4, 4}};
constexpr GUID kModule = {0x55555555, 0x6666, 0x7777, {8, 8, 8, 8, 8, 8, 8, 8}};

class Proxy : public testing::Test {
 protected:
  Proxy() {
    proxy->SetClassGuid(&kForeign);
    proxy->SetModuleGuid(&kModule);
    proxy->SetData("data", 4);
    db.Add(proxy.Get(), 0x01020304);
  }

  /// The record as a document writes it.
  std::vector<BYTE> Saved(CZDMProxyObject& object) {
    ByteStream stream;
    object.WriteHeader(&stream);
    object.SaveEmbedded(&stream, &db);
    object.SaveBody(&stream, &db);
    return stream.GetBytes();
  }

  /// Gives the proxy's record two plain relations, of which one is diffusible.
  void StoreRelations(CZDMProxyObject& object) {
    auto source = db.MakeObject();
    source->AddRelation(RelationTo(target));
    auto diffusible = RelationTo(target);
    diffusible->SetReltnDiffusible(true);
    source->AddRelation(diffusible);
    object.CopyFrom(source, zdm::kCopyMode);
    object.GetReltnColl()->RemoveAll();  // what is left is what the record holds
  }

  static LONG Collected(CZDMProxyObject& object, ULONG selector) {
    const auto relations = zdm::NewRelations();
    object.CollectRelations(static_cast<eZRelation>(selector), relations);
    return static_cast<LONG>(relations->GetCount());
  }

  TestDatabase db;
  ZRefPtr<IZDMObject> target = db.MakeObject(nullptr, 0x77);
  ZRefPtr<CZDMProxyObject> proxy = zdm::Attached(new CZDMProxyObject);
};

TEST_F(Proxy, OperationsAreInOrder) {
  ZDM_EXPECT_SLOTS(3, IZDMProxyObject, GetClassGuid, SetClassGuid, GetFormat, SetFormat,
                   GetModuleGuid, SetModuleGuid, IsWordSet, SetWord, GetKind, SetKind, GetData,
                   SetData, CollectRelations, LoadRawData, SaveEmbedded, LoadEmbedded,
                   SaveModuleGuid, LoadModuleGuid, SaveRelations, LoadRelations, GetKindValue);
}

TEST_F(Proxy, RecordIsHeaderEmbeddedRecordAndBody) {
  proxy->SetWord(true);
  proxy->SetKind(3);
  proxy->SetOptionAllowed(0x0102030405060708);
  const Bytes expected =
      Hex("11111111222233330404040404040404 "           // class stood for
          "04030201 FFFFFFFF 02 0807060504030201 "      // ID, owner's ID, format, option mask
          "55555555666677770808080808080808 00000000 "  // module, no relations
          "FFFF 03 00000000000000F0 "                   // word, kind, mask
          "07000000 000000 64617461");                  // body
  EXPECT_EQ(Saved(*proxy), expected);
  proxy->SetFormat(1);
  EXPECT_EQ(Saved(*proxy).size(), expected.size() - 31) << "no embedded record";
  EXPECT_EQ(proxy->GetTypeByte(), 1);
}

TEST_F(Proxy, ComesBackByteForByteAndWritesItAgain) {
  StoreRelations(*proxy);
  proxy->SetWord(true);
  const std::vector<BYTE> saved = Saved(*proxy);
  auto loaded = zdm::Attached(new CZDMProxyObject);
  db.Add(loaded.Get(), 0x01020305);
  ByteStream stream(saved);
  loaded->ReadHeader(&stream);
  loaded->LoadEmbedded(&stream, &db);
  const std::vector<BYTE> room(4);  // a document computes it from the length of the body
  loaded->SetData(room.data(), 4);
  loaded->LoadBody(&stream, &db);
  EXPECT_EQ(stream.GetBytesLeft(), 0u);
  EXPECT_TRUE(loaded->IsWordSet());
  EXPECT_EQ(Collected(*loaded, ZR_ALL), 2);
  loaded->SetID(0x01020304);
  EXPECT_EQ(Saved(*loaded), saved);
}

TEST_F(Proxy, HandsOutCopiesOfItsBytes) {
  void* out = nullptr;
  ASSERT_EQ(proxy->GetData(&out), 4);
  EXPECT_EQ(std::string(static_cast<char*>(out), 4), "data");
  CoTaskMemFree(out);
  proxy->SetData(nullptr, 4);
  out = &db;
  EXPECT_EQ(proxy->GetData(&out), 0);
  EXPECT_EQ(out, &db) << "untouched";
}

TEST_F(Proxy, CollectsRelationsBySelector) {
  EXPECT_EQ(Collected(*proxy, ZR_ALL), 0);
  StoreRelations(*proxy);
  EXPECT_EQ(Collected(*proxy, ZR_ALL), 2);
  EXPECT_EQ(Collected(*proxy, ZR_DIFFUSIBLE), 1);
  EXPECT_EQ(Collected(*proxy, ZR_NONDIFFUSIBLE), 1);
  EXPECT_EQ(Collected(*proxy, 0), 0);
  EXPECT_EQ(Collected(*proxy, ZRS_VALID), 0);
  proxy->SetFormat(1);
  EXPECT_EQ(Collected(*proxy, ZR_ALL), 0);
}

TEST_F(Proxy, CopyOfAProxyIsWrittenAlike) {
  StoreRelations(*proxy);
  proxy->SetKind(9);
  // A word that is neither of the two, as another program may have stored it.
  std::vector<BYTE> record = Saved(*proxy);
  const std::size_t word = 33 + 16 + 4 + 2 * 32;
  record[word] = 0x34;
  record[word + 10] = 0x12;  // the mask's last byte
  ByteStream stream(record);
  stream.Seek(33, STREAM_SEEK_SET);
  proxy->LoadEmbedded(&stream, &db);

  const auto copy = zdm::CloneAs<IZDMObject>(proxy->GetIZObject());
  auto* twin = dynamic_cast<CZDMProxyObject*>(copy.Get());
  ASSERT_NE(twin, nullptr);
  EXPECT_EQ(Saved(*twin), Saved(*proxy));
  EXPECT_EQ(Saved(*twin)[word], 0x34);
  EXPECT_FALSE(twin->JudgeSame(copy.Get())) << "a proxy is the same as nothing";
  EXPECT_EQ(copy->GetReferenceCount(), 1u);
}

TEST_F(Proxy, KeepsClonesOfTheRelationsOfAnObjectCopied) {
  auto source = db.MakeObject();
  source->AddRelation(RelationTo(target));
  proxy->CopyFrom(source, zdm::kCopyMode);
  EXPECT_EQ(Collected(*proxy, ZR_ALL), 1);
  source->GetReltnColl()->GetHead()->SetReltnDiffusible(true);
  EXPECT_EQ(Collected(*proxy, ZR_DIFFUSIBLE), 0) << "not shared";
  void* data = nullptr;
  EXPECT_EQ(proxy->GetData(&data), 4) << "only a proxy has bytes to give";
  CoTaskMemFree(data);
}

TEST_F(Proxy, BytesThatAreNotThereChangeNothing) {
  const struct {
    const char* name;
    Bytes bytes;
    HRESULT thrown;
    LONG length;
  } rows[] = {
      {"plain", {3, 0, 0, 0, 'x', 'y', 'z'}, S_OK, 3},
      {"none", {0, 0, 0, 0}, S_OK, 0},
      {"negative", {0xFF, 0xFF, 0xFF, 0xFF, 'x'}, S_OK, 0},
      {"one too many", {3, 0, 0, 0, 'x', 'y'}, E_FAIL, 4},
      {"two gigabytes", {0xFF, 0xFF, 0xFF, 0x7F, 'x', 'y'}, E_FAIL, 4},
      {"cut in the length", {3, 0}, E_FAIL, 4},
  };
  for (const auto& row : rows) {
    proxy->SetData("data", 4);
    ByteStream stream(row.bytes);
    EXPECT_EQ(Thrown([&] { proxy->LoadRawData(&stream, &db); }), row.thrown) << row.name;
    void* data = nullptr;
    EXPECT_EQ(proxy->GetData(&data), row.length) << row.name;
    CoTaskMemFree(data);
  }
  ByteStream small(std::vector<BYTE>(3));
  EXPECT_EQ(Thrown([&] { proxy->LoadOwnData(&small, &db); }), E_FAIL);
}

TEST_F(Proxy, RecordsThatEndEarlyThrow) {
  StoreRelations(*proxy);
  ExpectCutsFail(Saved(*proxy), [&](const Bytes& cut) {
    ByteStream stream(cut);
    auto loaded = zdm::Attached(new CZDMProxyObject);
    loaded->SetData("room", 4);
    loaded->ReadHeader(&stream);
    loaded->LoadEmbedded(&stream, &db);
    loaded->LoadBody(&stream, &db);
  });
}

}  // namespace
