// Identity, owners and attachments of data-model objects.
#include "tests/model/ModelSupport.h"
#include "zdm/extdata/CZExtDataMgr.h"
#include "zdm/host/IZGiMaterial.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/parameters/CZParameter.h"
#include "zdm/properties/CZProperty.h"
#include "zdm/relations/ZDfValues.h"

#include <gtest/gtest.h>

#include <memory>

ZDM_TEST_CLASS(Material, IZObject, IZDMObject, IZRelation, IZGiMaterial)

namespace zdm::test {

class Material : public IZDMObjectImpl<IZGiMaterial> {
  ZDM_OBJECT(Material)
 public:
  bool IsByCategory() override { return byCategory; }
  bool byCategory = false;
};

ZDM_OBJECT_BODY(Material)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

constexpr GUID kKey = {1, 0, 0, {}};
constexpr GUID kOtherKey = {2, 0, 0, {}};
constexpr GUID kKeys[] = {{1, 0, 0, {}}, {2, 0, 0, {}}, {3, 0, 0, {}},
                          {4, 0, 0, {}}, {5, 0, 0, {}}, {6, 0, 0, {}}};

/// A document whose objects have parameters of definitions.
class Parameterised : public DMObject {
 protected:
  /// A new parameter, without value, of a new definition.
  ZRefPtr<IZParameter> ParameterOf(const GUID& key) {
    const auto property = zdm::MakeObject<IZProperty, CZProperty>();
    property->SetGUID(key);
    auto definition = zdm::MakeObject<CZDefinition, CZDefinition>();
    definition->SetProperty(property, true);
    db.Add(definition.Get());
    definitions.push_back(definition);
    auto parameter = zdm::MakeObject<IZParameter, CZParameter>();
    parameter->SetDefinition(static_cast<IZDefinition*>(definition.Get()));
    return parameter;
  }

  std::vector<ZRefPtr<CZDefinition>> definitions;
};

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
  object->SetOwnerID(5);
  EXPECT_EQ(object->GetID(), 0u);
  EXPECT_EQ(object->GetOwnerID(), 0u);
  EXPECT_FALSE(object->IsObjectValid());
  EXPECT_EQ(object->GetDatabase(), nullptr);
  EXPECT_FALSE(object->JudgeSame(object.Get()));
  old->Object = nullptr;
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
  object->SetParameterArray(ParametersTo(other), false);
  EXPECT_EQ(IDsOffered(*object), "11 13 12 ");

  for (const auto& [stopAt, offered] :
       {std::pair{11, "11 "}, std::pair{13, "11 13 "}, std::pair{12, "11 13 12 "}}) {
    IDNotes visitor(stopAt);
    EXPECT_TRUE(object->VisitReferences(target, &visitor)) << stopAt;
    EXPECT_EQ(visitor.text, offered);
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
  EXPECT_EQ(object->SetExtDataMgr(zdm::NewOf<IZExtDataMgr, CZExtDataMgr>()), S_OK);

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

  object->RemoveExtData(kOtherKey, first);
  EXPECT_EQ(object->GetExtData(kKey, OLESTR("a")), first.Get());
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

// Each operation reaches the parameter of its own type, and no other.
TEST_F(Parameterised, ReadsAndWritesParametersByDefinition) {
  auto object = MakePlain();
  double number = 7;
  LONG integer = 7;
  bool flag = true;
  auto text = reinterpret_cast<BSTR>(&number);
  auto* value = reinterpret_cast<ZDfValue*>(&number);
  IZDMObject* target = object;
  const auto setAll = [&] {
    ZDfLong long8;
    long8.Value = 8;
    return object->SetParamDouble(&kKeys[0], 1.5) + object->SetParamLong(&kKeys[1], 2) +
           object->SetParamString(&kKeys[2], OLESTR("oak")) +
           object->SetParamValue(&kKeys[3], &long8) +
           object->SetParamRelation(&kKeys[4], object, true) +
           object->SetParamBool(&kKeys[5], false);
  };
  const auto getAll = [&] {
    return object->GetParamDouble(&kKeys[0], &number) + object->GetParamLong(&kKeys[1], &integer) +
           object->GetParamString(&kKeys[2], &text) + object->GetParamValue(&kKeys[3], &value) +
           object->GetParamRelation(&kKeys[4], &target) + object->GetParamBool(&kKeys[5], &flag);
  };
  for (const bool hasArray : {false, true}) {
    if (hasArray) object->AddParameter(nullptr);
    EXPECT_EQ(object->PeekParameterArray() != nullptr, hasArray);
    EXPECT_EQ(setAll() + getAll(), 0);
    EXPECT_EQ(object->GetParameter(kKeys[0]), nullptr);
    EXPECT_TRUE(number == 7 && integer == 7 && flag) << "untouched";
    EXPECT_TRUE(text == nullptr && value == nullptr && target == nullptr);
  }

  object->PeekParameterArray()->BeginAdd();
  for (const GUID& key : kKeys) object->AddParameter(ParameterOf(key));
  object->PeekParameterArray()->EndAdd();
  EXPECT_EQ(setAll(), 5);  // the relation needs one to be there
  object->GetParameter(kKeys[4])->SetRelation(nullptr, false);
  EXPECT_EQ(setAll() + getAll(), 12);
  EXPECT_EQ(number, 1.5);
  EXPECT_EQ(integer, 2);
  EXPECT_EQ(zdm::ToUtf8(text), "oak");
  EXPECT_EQ(static_cast<ZDfLong*>(value)->Value, 8);
  EXPECT_EQ(target, object.Get());
  EXPECT_EQ(object->GetReferenceCount(), 2u);
  EXPECT_FALSE(flag);
  SysFreeString(text);
  target->Release();
}

TEST_F(Parameterised, MaterialIsTheParametersUnlessItDefersToTheCategory) {
  auto object = MakePlain();
  ZRefPtr<IZGiMaterial> found;
  EXPECT_TRUE(object->GetMaterial(&kKey, found.Out()));
  EXPECT_EQ(found.Get(), nullptr);

  auto material = zdm::Attached(new zdm::test::Material);
  const auto parameter = ParameterOf(kKey);
  parameter->SetRelation(material, false);
  ZRefPtr<IZParameterArray> array;
  object->GetParameterArray(array.Out());
  array->BeginAdd();
  array->Add(parameter, 0);
  array->EndAdd();
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

  // Without a category; then of an object that is no material.
  for (IZDMObject* target : {static_cast<IZDMObject*>(material.Get()), object.Get()}) {
    parameter->SetRelation(target, false);
    EXPECT_TRUE(object->GetMaterial(&kKey, found.Out()));
    EXPECT_EQ(found.Get(), nullptr);
  }
}

}  // namespace
