// What things look like: display attributes, materials, and the defaults of a new document.
#include "document/CZCategoryDispAttrib.h"
#include "document/CZDMMaterial.h"
#include "document/CZDMMaterialMgr.h"
#include "document/CZDispAttrib.h"
#include "document/Document.h"
#include "tests/document/DocumentSupport.h"
#include "tests/support/Cuts.h"
#include "tests/support/TestDatabase.h"
#include "zdm/framework/CreateAs.h"

#include <functional>

using namespace zdm::test;
using zdm::DispValues;
using zdm::Document;

namespace {

DispValues RedDashes() {
  DispValues values;
  values.color = 0x00FF0000;
  values.lineType = zdm::Bstr(OLESTR("D"));
  values.lineTypeScale = 0.5;
  values.lineWeight = 70;
  values.isVisible = false;
  return values;
}

ZRefPtr<CZDispAttrib> AttribOf(const DispValues& values) {
  auto attribute = zdm::MakeObject<CZDispAttrib, CZDispAttrib>();
  attribute->SetValues(values);
  return attribute;
}

TEST(DispAttrib, IsStoredByteForByteAndDamageLeavesItsValues) {
  auto attribute = AttribOf(RedDashes());
  attribute->SetReltnTag(7);
  const std::vector<BYTE> bytes = BytesOf(*attribute);
  EXPECT_EQ(bytes, Hex("00008000 07000000 00000000 "      // relation
                       "0000FF00 0400000044000000 "       // colour, line type
                       "000000000000E03F 46000000 00"));  // its scale, weight, hidden
  auto loaded = AttribOf({});
  EXPECT_EQ(LoadBytes(*loaded, bytes), bytes.size());
  EXPECT_TRUE(loaded->JudgeSame(attribute));
  EXPECT_EQ(BytesOf(*loaded), bytes);
  auto kept = AttribOf({});
  ExpectCutsFail(bytes, [&](const Bytes& cut) { LoadBytes(*kept, cut); });
  EXPECT_TRUE(kept->GetValues() == DispValues());
}

TEST(DispAttrib, CountsAsTheSameByEveryValueAndNothingElse) {
  using A = CZDispAttrib&;
  const auto with = [](auto change) {
    return [=](A attribute) {
      auto values = RedDashes();
      change(values);
      attribute.SetValues(values);
    };
  };
  const struct {
    const char* name;
    std::function<void(A)> change;
    bool same;
  } rows[] = {{"tag", [](A a) { a.SetReltnTag(3); }, true},
              {"status", [](A a) { a.ClearReltnStatus(ZRS_VALID); }, true},
              {"visible", [](A a) { a.SetVisibility(zdm::kCategoryDraw, true, nullptr); }, false},
              {"colour", with([](DispValues& values) { values.color = 1; }), false},
              {"type", with([](DispValues& values) { values.lineType = {}; }), false},
              {"scale", with([](DispValues& values) { values.lineTypeScale = 1; }), false},
              {"weight", with([](DispValues& values) { values.lineWeight = 1; }), false}};
  auto attribute = AttribOf(RedDashes());
  EXPECT_FALSE(attribute->JudgeSame(nullptr));
  EXPECT_FALSE(attribute->JudgeSame(RelationTo(nullptr)));
  for (const auto& row : rows) {
    auto other = zdm::CloneAs<IZDispAttrib>(attribute);
    ASSERT_TRUE(attribute->JudgeSame(other));
    row.change(dynamic_cast<CZDispAttrib&>(*other));
    EXPECT_EQ(attribute->JudgeSame(other), row.same) << row.name;
    other->CopyFrom(attribute.Get());
    EXPECT_EQ(BytesOf(*other), BytesOf(*attribute)) << row.name;
  }
  attribute->CopyFrom(nullptr);
  attribute->CopyFrom(RelationTo(nullptr).Get());
  EXPECT_TRUE(attribute->GetValues() == RedDashes());
}

TEST(DispAttrib, OfAnObjectStandsAmongItsRelationsOnce) {
  TestDatabase db;
  auto wall = db.MakeObject(OLESTR("wall"));
  auto other = db.MakeObject();
  EXPECT_EQ(wall->GetDispAttrib(), nullptr);
  wall->AttachDispAttrib(nullptr);
  wall->AddRelation(RelationTo(other));
  auto first = AttribOf({});
  auto second = AttribOf(RedDashes());
  wall->AttachDispAttrib(first);
  wall->AttachDispAttrib(first);
  EXPECT_EQ(wall->GetDispAttrib(), first.Get());
  wall->AttachDispAttrib(second);
  EXPECT_EQ(wall->GetDispAttrib(), second.Get());
  EXPECT_EQ(wall->GetReltnColl()->GetCount(), 2);
  EXPECT_EQ(first->GetReferenceCount(), 1u);
  auto copy = zdm::CloneAs<IZDMObject>(wall);
  EXPECT_TRUE(copy->GetDispAttrib()->JudgeSame(second));
  wall->AttachDispAttrib(nullptr);
  EXPECT_EQ(wall->GetReltnColl()->GetCount(), 1);
}

TEST(CategoryDispAttrib, WithoutCategoryShowsDefaultsAndKeepsTheIDItRefersTo) {
  TestDatabase db;
  auto target = db.MakeObject(nullptr, 9);
  auto attribute = zdm::MakeObject<CZCategoryDispAttrib, CZCategoryDispAttrib>();
  attribute->SetEnabled(true);
  EXPECT_TRUE(attribute->GetValues() == DispValues());
  std::vector<BYTE> bytes = BytesOf(*attribute);
  ASSERT_EQ(bytes.size(), 17u);
  EXPECT_EQ(bytes[16], 1);
  bytes[12] = 9;
  EXPECT_EQ(LoadBytes(*attribute, bytes, &db), 17u);
  EXPECT_EQ(BytesOf(*attribute), bytes);
  EXPECT_EQ(attribute->GetCategory(), nullptr) << "object 9 is no category";
  EXPECT_TRUE(attribute->GetValues() == DispValues());
  auto copy = zdm::CloneAs<IZDispAttrib>(static_cast<IZRelation*>(attribute.Get()));
  EXPECT_TRUE(attribute->JudgeSame(copy));
  EXPECT_FALSE(attribute->JudgeSame(AttribOf({})));
  bytes.pop_back();
  EXPECT_EQ(Thrown([&] { LoadBytes(*attribute, bytes, &db); }), E_FAIL);
  EXPECT_TRUE(attribute->JudgeSame(copy)) << "damage changes neither category nor enabling";
}

TEST(Material, IsStoredAndCopiedWithWhatItLooksLike) {
  TestDatabase db;
  auto material = zdm::MakeObject<CZDMMaterial, CZDMMaterial>();
  db.Add(material);
  material->SetName(OLESTR("G"));
  material->SetByCategory(true);
  material->SetValues({0x00123456, 0.5, 2.0, zdm::Bstr(OLESTR(""))});
  const std::vector<BYTE> bytes = BytesOf(*material, &db);
  EXPECT_EQ(Bytes(bytes.begin() + 48, bytes.end()),
            Hex("0400000047000000 01 56341200 "                      // name, colour
                "000000000000E03F 0000000000000040 020000000000"));  // then the texture
  auto loaded = zdm::MakeObject<CZDMMaterial, CZDMMaterial>();
  db.Add(loaded);
  LoadBytes(*loaded, bytes, &db);
  EXPECT_TRUE(loaded->GetValues() == material->GetValues());
  EXPECT_TRUE(loaded->IsByCategory());
  EXPECT_FALSE(loaded->JudgeSame(material.Get()));
  auto copy = zdm::CloneAs<IZGiMaterial>(static_cast<IZDMObject*>(material.Get()));
  EXPECT_TRUE(copy->IsByCategory());
  ExpectCutsFail(
      bytes, [&](const Bytes& cut) { LoadBytes(*loaded, cut, &db); }, 49);
  EXPECT_TRUE(loaded->GetValues() == material->GetValues());
}

TEST(DocumentDefaults, AreMadeWithADocumentAndFoundWhenItIsOpened) {
  auto document = Document::Create(OLESTR("House"));
  EXPECT_EQ(document.Add(OLESTR("Wall"))->GetID(), 1u) << "soft IDs begin with the first object";
  dynamic_cast<CZDispAttrib&>(*document->GetDefaultDispAttrib()).SetValues(RedDashes());
  const auto opened = Reopened(*document.Get());
  for (CZDocument* each : {document.Get(), opened.Get()}) {
    IZDMObjMgr* manager = each->GetMaterialMgr();
    ASSERT_NE(manager, nullptr);
    EXPECT_LT(static_cast<LONG>(manager->GetID()), -1);
    IZDMObject* material = manager->FindByName(zdm::kDefaultMaterialName);
    ASSERT_NE(zdm::ViewAs<IZGiMaterial>(material), nullptr);
    EXPECT_LT(static_cast<LONG>(material->GetID()), -1);
    ASSERT_NE(each->GetDefaultDispAttrib(), nullptr);
    EXPECT_TRUE(each->GetDefaultDispAttrib()->JudgeSame(AttribOf(RedDashes())));
  }
  opened->RemoveItem(static_cast<IZDMObject*>(opened->GetMaterialMgr()));
  EXPECT_EQ(opened->GetMaterialMgr(), nullptr);
}

TEST(DocumentDefaults, AbsentOnesAreNull) {
  const auto opened = Reopened(*zdm::MakeObject<CZDocument, CZDocument>());
  EXPECT_EQ(opened->GetMaterialMgr(), nullptr);
  EXPECT_EQ(opened->GetDefaultDispAttrib(), nullptr);
}

}  // namespace
