// Objects that the document cannot make, and those with headers of their own: through a file and
// back, byte for byte.
#include "document/CZDMAbsentObject.h"
#include "tests/document/DocumentSupport.h"
#include "tests/model/EmbedSupport.h"
#include "tests/support/TestDatabase.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/CZDMObjEmbed.h"
#include "zdm/model/CZDMObjMgr.h"
#include "zdm/model/CZDMProxyObject.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"

#include <cstring>

using namespace zdm::test;

ZDM_OBJECT_BODY(zdm::test::Extension)

namespace {

class Objects : public testing::Test {
 protected:
  /// The object of that ID, in the document as it comes back from its file.
  template <class T>
  T* At(LONG id) {
    document = Reopened(*document);
    return dynamic_cast<T*>(document->GetOIDByID(id)->Object);
  }

  ZRefPtr<CZDocument> document = zdm::MakeObject<CZDocument, CZDocument>();
};

TEST_F(Objects, OfAnAbsentClassKeepTheirBytesAndOfferTheirReferences) {
  auto plain = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  auto foreign = zdm::MakeObject<ForeignObject, ForeignObject>();
  foreign->SetName(OLESTR("own data"));
  foreign->type = 9;
  foreign->tail = {1, 2, 3};
  document->AddTail(plain);
  document->AddTail(foreign);
  foreign->AddRelation(RelationTo(plain));
  ZRefPtr<IZParameterArray> parameters;
  foreign->GetParameterArray(parameters.Out());
  parameters->BeginAdd();
  parameters->AddRelationParameter(nullptr, nullptr, 1, plain, true, 0);
  parameters->EndAdd();
  auto* absent = At<CZDMAbsentObject>(2);
  ASSERT_NE(absent, nullptr);
  EXPECT_EQ(absent->GetAbsentClassID(), ForeignObject::kClass);
  EXPECT_EQ(absent->GetTypeByte(), 9);
  EXPECT_FALSE(absent->IsOpaque());
  ASSERT_NE(absent->GetReltnColl(), nullptr);
  EXPECT_EQ(absent->GetReltnColl()->GetCount(), 1);
  ASSERT_NE(absent->PeekParameterArray(), nullptr);
  EXPECT_EQ(absent->PeekParameterArray()->GetAt(0)->GetRelation()->GetID(), 1u);

  // A change of what is common to all objects leaves the class's own data and the tail alone.
  absent->AddRelation(RelationTo(absent));
  absent = At<CZDMAbsentObject>(2);
  ASSERT_NE(absent, nullptr);
  EXPECT_EQ(absent->GetReltnColl()->GetCount(), 2);
  auto copy = zdm::CloneAs<IZDMObject>(absent);
  ASSERT_NE(copy, nullptr);
  document->AddTail(copy);
  EXPECT_EQ(At<CZDMAbsentObject>(3)->GetAbsentClassID(), ForeignObject::kClass);
  const auto record = BytesOf(*document->GetOIDByID(2)->Object);
  auto copied = BytesOf(*document->GetOIDByID(3)->Object);
  copied[offsetof(zdm::ObjectHeader, id)] = 2;
  EXPECT_EQ(copied, record);
}

TEST_F(Objects, WithABodyThatNobodyCanReadStayWhole) {
  class Strange : public ForeignObject {
    void SaveBody(IZStream* stream, IZDatabase*) override {
      const BYTE body[] = {6, 0, 0, 0, 0, 1, 255, 255, 255, 127};
      stream->Write(body, sizeof(body));
    }
  };
  document->AddTail(zdm::MakeObject<IZDMObject, Strange>());
  auto* absent = At<CZDMAbsentObject>(1);
  ASSERT_NE(absent, nullptr);
  EXPECT_TRUE(absent->IsOpaque());
  EXPECT_EQ(absent->GetReltnColl(), nullptr);
}

/// A known class whose own data are cut short.
TEST_F(Objects, ThatCannotReadTheirOwnRecordStayWhole) {
  class Short : public CZDMPlainObject {
    void SaveOwnData(IZStream* stream, IZDatabase*) override { stream->WriteCount(500); }
  };
  document->AddTail(zdm::MakeObject<IZDMObject, Short>());
  auto* absent = At<CZDMAbsentObject>(1);
  ASSERT_NE(absent, nullptr);
  EXPECT_EQ(absent->GetAbsentClassID(), zdm::ClassRow<CZDMPlainObject>::kClassID);
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
  EXPECT_NE(At<CZDMAbsentObject>(2), nullptr);
}

TEST_F(Objects, EmbeddedOnesAndProxiesComeBackThroughTheirFrames) {
  auto plain = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  auto proxy = zdm::MakeObject<CZDMProxyObject, CZDMProxyObject>();
  auto embedded = zdm::MakeObject<CZDMObjEmbed, CZDMObjEmbed>();
  document->AddTail(plain);
  document->AddTail(proxy->GetIZObject());
  document->AddTail(embedded->GetIZObject());
  proxy->SetClassGuid(&ForeignObject::kClass);
  proxy->SetData("bytes of a stranger", 19);
  proxy->AddRelation(RelationTo(plain));
  embedded->SetMask(0x123456789ULL);
  auto* readEmbedded = At<CZDMObjEmbed>(3);
  ASSERT_NE(readEmbedded, nullptr);
  EXPECT_EQ(readEmbedded->GetMask(nullptr), 0x123456789ULL);
  auto* readProxy = At<CZDMProxyObject>(2);
  ASSERT_NE(readProxy, nullptr);
  EXPECT_EQ(*readProxy->GetClassGuid(), ForeignObject::kClass);
  void* data = nullptr;
  ASSERT_EQ(readProxy->GetData(&data), 19);
  EXPECT_EQ(std::memcmp(data, "bytes of a stranger", 19), 0);
  CoTaskMemFree(data);
  EXPECT_EQ(readProxy->GetReltnColl()->GetCount(), 1);
  EXPECT_EQ(document->GetCount(), 3);
}

/// Absent objects are of one class, whatever they stand for.
TEST_F(Objects, AbsentWithAndWithoutAFrameComeBackFromOneDocument) {
  class ForeignExtension : public Extension {
    HRESULT GetClassID(GUID* out) const override {
      *out = ForeignObject::kClass;
      return S_OK;
    }
  };
  auto embedded = zdm::MakeObject<CZDMObjEmbed, CZDMObjEmbed>();
  embedded->SetExt(zdm::MakeObject<Extension, ForeignExtension>());
  document->AddTail(zdm::MakeObject<ForeignObject, ForeignObject>());
  document->AddTail(embedded->GetIZObject());
  ASSERT_NE(At<CZDMAbsentObject>(1), nullptr);
  auto* framed = At<CZDMAbsentObject>(2);
  ASSERT_NE(framed, nullptr);
  EXPECT_EQ(framed->GetFrameKind(), zdm::FrameKind::kEmbedded);
}

}  // namespace
