// Identity, owners and attachments of data-model objects.
#include "platform/geometry/GeBox.h"
#include "tests/model/ModelSupport.h"
#include "zdm/extdata/CZExtDataMgr.h"
#include "zdm/host/IZGiDevice.h"
#include "zdm/host/IZGiMaterial.h"

#include <gtest/gtest.h>

#include <memory>

ZDM_TEST_CLASS(Material, IZObject, IZDMObject, IZRelation, IZGiMaterial)
ZDM_TEST_CLASS(Device, IZObject, IZGiDevice)

namespace zdm::test {

class Material : public IZDMObjectImpl<IZGiMaterial> {
  ZDM_OBJECT(Material)
 public:
  bool IsByCategory() override { return byCategory; }
  bool byCategory = false;
};

class Device : public IZObjectImpl<IZGiDevice> {
  ZDM_OBJECT(Device)
 public:
  void Select(IZDisplay*) override { calls += "plain "; }
  void SelectMarked(IZDisplay*) override { calls += "marked "; }
  GiContext* GetContext(LONGLONG) override { return nullptr; }
  LONG GetState() override { return 0; }
  void DrawObject(IZDisplay*, GiContext*) override {}

  std::string calls;
};

ZDM_OBJECT_BODY(Material)
ZDM_OBJECT_BODY(Device)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

constexpr GUID kKey = {1, 0, 0, {}};
constexpr GUID kOtherKey = {2, 0, 0, {}};

TEST_F(DMObject, StartsUnattachedWithTheMaskOfANewObject) {
  auto object = MakePlain();
  EXPECT_EQ(object->GetOID()->Status, std::bitset<64>().set(12));
  EXPECT_EQ(static_cast<ULONGLONG>(object->GetOptionAllowed()), 0xF230FA2000000000u);
  EXPECT_FALSE(object->IsObjectValid());
  EXPECT_EQ(object->GetOwnerOID(), nullptr);
  EXPECT_EQ(object->GetReltnStatus(), ZRS_VALID);
  EXPECT_EQ(object->GetReltnTag(), -1);
  EXPECT_EQ(object->GetReltnColl(), nullptr);
  EXPECT_EQ(object->PeekParameterArray(), nullptr);
  EXPECT_TRUE(BytesOf(*object).empty());
}

TEST_F(DMObject, HasTheEmptyBox) {
  auto object = MakePlain();
  GeBox box({0, 0, 0}, {1, 1, 1});
  object->UnionBox(&box);
  EXPECT_EQ(box, GeBox({0, 0, 0}, {1, 1, 1}));
  object->GetGeBox(&box, nullptr, nullptr);
  EXPECT_EQ(box, GeBox());
  EXPECT_EQ(object->GetSizeY(nullptr, nullptr), 2e20);
}

TEST_F(DMObject, DrawVariantsDrawAndSelectionFollowsBit14) {
  Stray object;
  object.DrawVariant1(nullptr, nullptr, nullptr);
  object.DrawVariant2(nullptr, nullptr, nullptr);
  object.DrawVariant3(nullptr, nullptr, nullptr);
  object.DrawVariant4(nullptr, nullptr, nullptr);
  object.DrawVariant5(nullptr, nullptr, nullptr);
  EXPECT_EQ(object.drawn, 5);

  zdm::test::Device device;
  object.Select(&device);
  object.SetStatus(14);
  object.Select(&device);
  EXPECT_EQ(device.calls, "plain marked ");
}

TEST_F(DMObject, KeepsItsStatusInANewRecord) {
  auto object = MakePlain();
  object->SetStatus(40);
  auto* record = new OID(1, 2, 77, nullptr);
  record->SetStatus(41, 0);
  object->SetOID(record, false);  // the old one is deleted: the leak check watches
  EXPECT_EQ(object->GetOID(), record);
  EXPECT_EQ(object->GetID(), 77u);
  EXPECT_EQ(record->Object, object.Get());
  EXPECT_EQ(record->Status, std::bitset<64>().set(12).set(40));
  object->SetOID(record, false);
  EXPECT_EQ(record->Status, std::bitset<64>().set(12).set(40));
}

TEST_F(DMObject, LeavesTheOldRecordToTheCallerOfARawExchange) {
  auto object = MakePlain();
  const std::unique_ptr<OID> old(object->GetOID());
  auto* record = new OID(0, 0, 77, nullptr);
  object->SetOID(record, true);
  EXPECT_EQ(old->Object, object.Get());
  EXPECT_EQ(record->Object, nullptr);
  EXPECT_TRUE(record->Status.none());
  old->Object = nullptr;
}

TEST_F(DMObject, AnswersWithoutARecord) {
  auto object = MakePlain();
  const std::unique_ptr<OID> old(object->GetOID());
  object->SetOID(nullptr, false);
  object->SetStatus(3);
  object->SetID(5);
  EXPECT_EQ(object->GetID(), 0u);
  EXPECT_FALSE(object->IsObjectValid());
  EXPECT_EQ(object->GetDatabase(), nullptr);
  EXPECT_FALSE(object->JudgeSame(object.Get()));
  old->Object = nullptr;
}

TEST_F(DMObject, IsTheSameOnlyAsItself) {
  auto a = MakePlain();
  auto b = MakePlain();
  auto relation = RelationTo(a);
  EXPECT_TRUE(a->JudgeSame(a.Get()));
  EXPECT_TRUE(a->JudgeSame(static_cast<IZRelation*>(a.Get())));
  EXPECT_FALSE(a->JudgeSame(b.Get()));
  EXPECT_FALSE(a->JudgeSame(static_cast<IZDMObject*>(nullptr)));
  EXPECT_FALSE(a->JudgeSame(static_cast<IZRelation*>(relation.Get())));
}

TEST_F(DMObject, FindsItsDocumentUpALongChainOfOwners) {
  std::vector<ZRefPtr<IZDMObject>> chain(100000);
  IZDMObject* owner = &db;
  for (auto& link : chain) {
    link = MakePlain();
    link->SetOwner(owner);
    owner = link;
  }
  EXPECT_EQ(chain.back()->GetDatabase(), static_cast<IZDatabase*>(&db));
  EXPECT_EQ(static_cast<IZDMObject&>(db).GetDatabase(), static_cast<IZDatabase*>(&db));

  chain.front()->SetOwner(nullptr);
  EXPECT_EQ(chain.back()->GetDatabase(), nullptr);
  for (const std::size_t ringAt : {1u, 2u, 3u, 64u, 50000u}) {
    chain.front()->SetOwner(chain[ringAt]);
    EXPECT_EQ(chain.back()->GetDatabase(), nullptr) << ringAt;
  }
}

TEST_F(DMObject, OwnerIDsAreThoseOfTheOwnersRecord) {
  auto owner = db.MakeObject(nullptr, 9);
  auto object = MakePlain();
  object->SetOwnerID(3);
  EXPECT_EQ(object->GetOwnerID(), 0u);
  object->SetOwner(owner);
  EXPECT_EQ(object->GetOwnerID(), 9u);
  EXPECT_EQ(object->GetOwner(), owner.Get());
}

TEST_F(DMObject, OffersOwnerThenParametersThenValidRelations) {
  auto owner = db.MakeObject(nullptr, 11);
  auto target = db.MakeObject(nullptr, 12);
  auto other = db.MakeObject(nullptr, 13);
  auto object = MakePlain();
  EXPECT_EQ(IDsOffered(*object), "- ");

  object->SetOwner(owner);
  object->AddRelation(RelationTo(target));
  auto invalid = RelationTo(db.MakeObject(nullptr, 14));
  invalid->ClearReltnStatus(ZRS_VALID);
  object->AddRelation(invalid);
  auto array = zdm::Attached(new ParamArray);
  array->relation = RelationTo(other);
  object->SetParameterArray(array, false);
  EXPECT_EQ(IDsOffered(*object), "11 13 12 ");

  const struct {
    LONG stopAt;
    const char* offered;
  } rows[] = {{11, "11 "}, {13, "11 13 "}, {12, "11 13 12 "}};
  for (const auto& row : rows) {
    Canary visitor;
    visitor.stopAt = row.stopAt;
    EXPECT_TRUE(object->VisitReferences(target, &visitor)) << row.stopAt;
    EXPECT_EQ(visitor.ids, row.offered);
    EXPECT_EQ(visitor.askedRoot, target.Get());
    EXPECT_EQ(visitor.askedOwner, object.Get());
  }
}

TEST_F(DMObject, IsNotAmongItsOwnRelations) {
  auto object = MakePlain();
  object->AddRelation(object);
  EXPECT_EQ(object->GetReltnColl(), nullptr);
  object->AddRelation(RelationTo(object));
  object->AddRelation(object);
  EXPECT_EQ(object->GetReltnColl()->GetCount(), 1);
  EXPECT_EQ(object->GetReferenceCount(), 1u);
}

TEST_F(DMObject, FindsExtendedDataByKeyAndName) {
  auto object = zdm::Attached(new CZDMPlainObject);
  EXPECT_EQ(object->GetExtData(kKey, OLESTR("a")), nullptr);
  object->SetExtData(kKey, nullptr);
  EXPECT_EQ(object->GetExtDataMgr(), nullptr);
  EXPECT_EQ(object->SetExtDataMgr(nullptr), E_INVALIDARG);
  auto manager = zdm::NewOf<IZExtDataMgr, CZExtDataMgr>();
  EXPECT_EQ(object->SetExtDataMgr(manager), S_OK);
  EXPECT_EQ(object->GetExtDataMgr(), manager.Get());

  auto first = MakeItem(OLESTR("a"));
  auto second = MakeItem(OLESTR("a"));
  object->SetExtData(kKey, first);
  object->SetExtData(kKey, second);
  object->SetExtData(kKey, MakePlain());  // no item: a null element
  object->SetExtData(kKey, MakeItem(OLESTR("b")));
  EXPECT_EQ(object->GetExtData(kKey, OLESTR("a")), first.Get());
  EXPECT_NE(object->GetExtData(kKey, OLESTR("b")), nullptr);
  EXPECT_EQ(object->GetExtData(kKey, OLESTR("A")), nullptr);
  EXPECT_EQ(object->GetExtData(kOtherKey, OLESTR("a")), nullptr);
  EXPECT_EQ(object->GetExtData(kKey, nullptr), nullptr);

  object->RemoveExtData(kOtherKey, first);
  object->RemoveExtData(kKey, nullptr);
  object->RemoveExtData(kKey, first);
  EXPECT_EQ(object->GetExtData(kKey, OLESTR("a")), second.Get());
  object->ClearExtData();
  EXPECT_EQ(object->GetExtDataMgr(), nullptr);
}

TEST_F(DMObject, OwnsItsParameterArray) {
  auto object = MakePlain();
  ZRefPtr<IZParameterArray> array;
  object->GetParameterArray(array.Out());
  EXPECT_EQ(array.Get(), object->PeekParameterArray());
  EXPECT_EQ(array->GetOwner(), object.Get());
  object->SetParameterArray(array, true);  // the present one: nothing changes
  EXPECT_EQ(array.Get(), object->PeekParameterArray());

  auto other = MakePlain();
  other->SetParameterArray(array, true);
  EXPECT_NE(other->PeekParameterArray(), array.Get());
  other->SetParameterArray(array, false);
  EXPECT_EQ(array->GetOwner(), other.Get());
  object->ClearParameters();  // the array is the other object's now
  EXPECT_EQ(array->GetOwner(), other.Get());
  other = nullptr;
  EXPECT_EQ(array->GetOwner(), nullptr);
}

TEST_F(DMObject, ForwardsParameterAccessToTheArray) {
  auto object = MakePlain();
  double number = 7;
  LONG integer = 7;
  bool flag = true;
  auto text = reinterpret_cast<BSTR>(&number);
  auto* value = reinterpret_cast<ZDfValue*>(&number);
  IZDMObject* target = object;
  const auto askAll = [&] {
    int answered = 0;
    answered += object->GetParamDouble(&kKey, &number);
    answered += object->SetParamDouble(&kKey, 1);
    answered += object->GetParamLong(&kKey, &integer);
    answered += object->SetParamLong(&kKey, 1);
    answered += object->GetParamString(&kKey, &text);
    answered += object->SetParamString(&kKey, nullptr);
    answered += object->GetParamValue(&kKey, &value);
    answered += object->SetParamValue(&kKey, nullptr);
    answered += object->GetParamRelation(&kKey, &target);
    answered += object->SetParamRelation(&kKey, nullptr, true);
    answered += object->GetParamBool(&kKey, &flag);
    answered += object->SetParamBool(&kKey, false);
    return answered;
  };
  EXPECT_EQ(askAll(), 0);
  EXPECT_EQ(object->GetParameter(kKey), nullptr);
  EXPECT_EQ(number, 7);
  EXPECT_EQ(text, nullptr);
  EXPECT_EQ(value, nullptr);
  EXPECT_EQ(target, nullptr);

  auto array = zdm::Attached(new ParamArray);
  object->SetParameterArray(array, false);
  EXPECT_EQ(askAll(), 12);
  object->GetParameter(kKey);
  object->AddParameter(nullptr);
  EXPECT_EQ(array->calls,
            "GetParamDouble SetParamDouble GetParamLong SetParamLong GetParamString "
            "SetParamString GetParamValue SetParamValue GetParamRelation SetParamRelation "
            "GetParamBool SetParamBool GetParameter Add");
}

TEST_F(DMObject, MaterialIsTheParametersUnlessItDefersToTheCategory) {
  auto object = MakePlain();
  ZRefPtr<IZGiMaterial> found;
  EXPECT_TRUE(object->GetMaterial(&kKey, found.Out()));
  EXPECT_EQ(found.Get(), nullptr);

  auto material = zdm::Attached(new zdm::test::Material);
  auto array = zdm::Attached(new ParamArray);
  array->relation = RelationTo(material);
  object->SetParameterArray(array, false);
  EXPECT_TRUE(object->GetMaterial(&kKey, found.Out()));
  EXPECT_EQ(found.Get(), material.Get());
  EXPECT_EQ(material->GetReferenceCount(), 2u);

  zdm::test::Stray inCategory;
  inCategory.categoryMaterial = zdm::MakeObject<IZGiMaterial, zdm::test::Material>();
  inCategory.SetParameterArray(array, false);
  EXPECT_TRUE(inCategory.GetMaterial(&kKey, found.Out()));
  EXPECT_EQ(found.Get(), material.Get());
  material->byCategory = true;
  EXPECT_TRUE(inCategory.GetMaterial(&kKey, found.Out()));
  EXPECT_EQ(found.Get(), inCategory.categoryMaterial.Get());
  EXPECT_EQ(found->GetReferenceCount(), 2u);

  // Without a category.
  EXPECT_TRUE(object->GetMaterial(&kKey, found.Out()));
  EXPECT_EQ(found.Get(), nullptr);
  EXPECT_EQ(material->GetReferenceCount(), 1u);

  array->relation = RelationTo(object);  // no material
  EXPECT_TRUE(object->GetMaterial(&kKey, found.Out()));
  EXPECT_EQ(found.Get(), nullptr);
}

}  // namespace
