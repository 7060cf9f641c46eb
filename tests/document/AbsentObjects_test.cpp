// Objects that the document cannot make, and those with headers of their own: through a file and
// back, byte for byte.
#include "document/CZDMAbsentObject.h"
#include "document/CZDMPlainObject.h"
#include "document/CZDocument.h"
#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"
#include "tests/support/TempFile.h"
#include "tests/support/TestDatabase.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDMObjEmbed.h"
#include "zdm/model/CZDMObjMgr.h"
#include "zdm/model/CZDMProxyObject.h"
#include "zdm/model/ObjectHeader.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"

#include <gtest/gtest.h>

using namespace zdm::test;

namespace {

constexpr GUID kForeignClass = zdm::ParseGuid("F0F0F0F0-0001-4000-8000-0123456789AB");

/// Writes records of a class that nobody has.
class Foreign : public CZDMPlainObject {
 public:
  std::vector<BYTE> tail;

  void WriteHeader(IZStream* stream) override {
    const zdm::ObjectHeader header = {
        kForeignClass,     7, 8, static_cast<LONG>(GetID()), static_cast<LONG>(GetOwnerID()), 9,
        GetOptionAllowed()};
    stream->Write(&header, sizeof(header));
  }
  void SaveTail(IZStream* stream, IZDatabase*) override {
    stream->Write(tail.data(), static_cast<ULONG>(tail.size()));
  }
};

class Objects : public testing::Test {
 protected:
  /// Saves the document and opens what was saved.
  void Reopen() {
    document->SaveAs(TempFile("objects.zdm"));
    bytes = FileBytes(document->GetPath());
    document = CZDocument::Open(document->GetPath());
  }
  /// The open document gives the bytes that were saved last.
  void ExpectSameBytes() {
    document->SaveAs(TempFile("again.zdm"));
    EXPECT_EQ(FileBytes(document->GetPath()), bytes);
  }
  template <class T>
  T* At(LONG id) {
    return dynamic_cast<T*>(document->GetOIDByID(id)->Object);
  }

  ZRefPtr<CZDocument> document = zdm::MakeObject<CZDocument, CZDocument>();
  std::vector<BYTE> bytes;
};

TEST_F(Objects, OfAnAbsentClassKeepTheirBytesAndOfferTheirReferences) {
  auto plain = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  auto foreign = zdm::MakeObject<Foreign, Foreign>();
  foreign->SetName(OLESTR("own data"));
  foreign->tail = {1, 2, 3};
  document->AddTail(plain);
  document->AddTail(foreign);
  foreign->AddRelation(RelationTo(plain));
  ZRefPtr<IZParameterArray> parameters;
  foreign->GetParameterArray(parameters.Out());
  parameters->BeginAdd();
  parameters->AddRelationParameter(nullptr, nullptr, 1, plain, true, 0);
  parameters->EndAdd();
  Reopen();
  auto* absent = At<CZDMAbsentObject>(2);
  ASSERT_NE(absent, nullptr);
  EXPECT_EQ(absent->GetAbsentClassID(), kForeignClass);
  EXPECT_EQ(absent->GetTypeByte(), 9);
  EXPECT_FALSE(absent->IsOpaque());
  ASSERT_NE(absent->GetReltnColl(), nullptr);
  EXPECT_EQ(absent->GetReltnColl()->GetCount(), 1);
  ASSERT_NE(absent->PeekParameterArray(), nullptr);
  EXPECT_EQ(absent->PeekParameterArray()->GetAt(0)->GetRelation()->GetID(), 1u);
  ExpectSameBytes();

  // A change of what is common to all objects leaves the class's own data and the tail alone.
  absent->AddRelation(RelationTo(absent));
  Reopen();
  absent = At<CZDMAbsentObject>(2);
  ASSERT_NE(absent, nullptr);
  EXPECT_EQ(absent->GetReltnColl()->GetCount(), 2);
  auto copy = zdm::CloneAs<IZDMObject>(absent);
  ASSERT_NE(copy, nullptr);
  document->AddTail(copy);
  Reopen();
  EXPECT_EQ(At<CZDMAbsentObject>(3)->GetAbsentClassID(), kForeignClass);
  const auto record = BytesOf(*At<CZDMAbsentObject>(2));
  auto copied = BytesOf(*At<CZDMAbsentObject>(3));
  copied[offsetof(zdm::ObjectHeader, id)] = 2;
  EXPECT_EQ(copied, record);
}

TEST_F(Objects, WithABodyThatNobodyCanReadStayWhole) {
  class Strange : public Foreign {
    void SaveBody(IZStream* stream, IZDatabase*) override {
      const BYTE body[] = {6, 0, 0, 0, 0, 1, 255, 255, 255, 127};
      stream->Write(body, sizeof(body));
    }
  };
  document->AddTail(zdm::MakeObject<IZDMObject, Strange>());
  Reopen();
  auto* absent = At<CZDMAbsentObject>(1);
  ASSERT_NE(absent, nullptr);
  EXPECT_TRUE(absent->IsOpaque());
  EXPECT_EQ(absent->GetReltnColl(), nullptr);
  ExpectSameBytes();
}

/// A known class whose own data are cut short.
TEST_F(Objects, ThatCannotReadTheirOwnRecordStayWhole) {
  class Short : public CZDMPlainObject {
    void SaveOwnData(IZStream* stream, IZDatabase*) override { stream->WriteCount(500); }
  };
  document->AddTail(zdm::MakeObject<IZDMObject, Short>());
  Reopen();
  auto* absent = At<CZDMAbsentObject>(1);
  ASSERT_NE(absent, nullptr);
  EXPECT_EQ(absent->GetAbsentClassID(), zdm::ClassRow<CZDMPlainObject>::kClassID);
  ExpectSameBytes();
}

/// A manager that ends while the document is loaded, and with it what it holds of a lost object.
TEST_F(Objects, ThatEndWhileTheyLoadLeaveTheRecordsTheyNamed) {
  class Long : public CZDMObjMgr {
    void SaveOwnData(IZStream* stream, IZDatabase* database) override {
      CZDMObjMgr::SaveOwnData(stream, database);
      stream->WriteCount(0);
    }
  };
  auto plain = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  auto manager = zdm::MakeObject<IZDMObjMgr, Long>();
  document->AddTail(plain);
  document->AddTail(manager);
  manager->SetCurrent(plain);
  plain->SetObjectValid(false);
  Reopen();
  EXPECT_NE(At<CZDMAbsentObject>(2), nullptr);
  ExpectSameBytes();
}

TEST_F(Objects, EmbeddedOnesAndProxiesComeBackThroughTheirFrames) {
  auto plain = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  auto proxy = zdm::MakeObject<CZDMProxyObject, CZDMProxyObject>();
  auto embedded = zdm::MakeObject<CZDMObjEmbed, CZDMObjEmbed>();
  document->AddTail(plain);
  document->AddTail(proxy->GetIZObject());
  document->AddTail(embedded->GetIZObject());
  proxy->SetClassGuid(&kForeignClass);
  proxy->SetData("bytes of a stranger", 19);
  proxy->AddRelation(RelationTo(plain));
  embedded->SetMask(0x123456789ULL);
  Reopen();
  auto* readProxy = At<CZDMProxyObject>(2);
  ASSERT_NE(readProxy, nullptr);
  EXPECT_EQ(*readProxy->GetClassGuid(), kForeignClass);
  void* data = nullptr;
  ASSERT_EQ(readProxy->GetData(&data), 19);
  EXPECT_EQ(std::memcmp(data, "bytes of a stranger", 19), 0);
  CoTaskMemFree(data);
  EXPECT_EQ(readProxy->GetReltnColl()->GetCount(), 1);
  auto* readEmbedded = At<CZDMObjEmbed>(3);
  ASSERT_NE(readEmbedded, nullptr);
  EXPECT_EQ(readEmbedded->GetMask(nullptr), 0x123456789ULL);
  EXPECT_EQ(document->GetCount(), 3);
  ExpectSameBytes();
}

}  // namespace
