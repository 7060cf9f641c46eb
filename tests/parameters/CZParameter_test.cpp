// What a parameter holds, what it reports, what it takes from its definition and along its link.
#include "tests/parameters/ParameterSupport.h"
#include "zdm/parameters/CZParameterArray.h"
#include "zdm/properties/GUID_UNSET.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <gtest/gtest.h>

#include <functional>

namespace zdm::test {
class Offered;
}

ZDM_CLASS_ROW(zdm::test::TestModule, false, zdm::test::Offered,
              "00000000-0000-0000-0000-000000000000", IZObject, IZReltnVisitor)

namespace zdm::test {

/// Looks inside every relation, writes the target IDs down, and moves targets to `newOid`.
class Offered : public ZReltnVisitor<IZReltnVisitor> {
  ZDM_OBJECT(Offered)
 public:
  using ZReltnVisitor::Visit;
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    return reltn->Accept(root, owner, this);
  }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) override {
    ids += std::to_string((*oid)->ID) + ' ';
    const bool stops = (*oid)->ID == stopAt;
    if (newOid != nullptr) *oid = newOid;
    return stops;
  }

  std::string ids;
  LONG stopAt = 0;
  OID* newOid = nullptr;
};

ZDM_OBJECT_BODY(Offered)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

TEST(Parameter, StartsEmpty) {
  const auto parameter = MakeParameter();
  EXPECT_EQ(parameter->GetFlags(), 0x000A);
  EXPECT_EQ(parameter->GetKey(), 0xFFFF);
  EXPECT_EQ(NameOf(parameter), "Unknown");
  EXPECT_EQ(KeyOf(parameter), GUID_UNSET);
  EXPECT_EQ(parameter->GetDefinitionIndex(), -1);
  EXPECT_EQ(parameter->GetPropertyType(), 0u);
  EXPECT_EQ(parameter->GetValue(), nullptr);
}

TEST(Parameter, KeepsEachFlagInItsBit) {
  const struct {
    void (IZParameter::*set)(bool);
    bool (IZParameter::*is)();
    USHORT bit;
  } rows[] = {{&IZParameter::SetFlag02, &IZParameter::IsFlag02, 0x02},
              {&IZParameter::SetReadOnly, &IZParameter::IsReadOnly, 0x04},
              {&IZParameter::SetFlag08, &IZParameter::IsFlag08, 0x08},
              {&IZParameter::SetFlag10, &IZParameter::IsFlag10, 0x10},
              {&IZParameter::SetFlag20, &IZParameter::IsFlag20, 0x20}};
  const auto parameter = MakeParameter();
  for (const auto& row : rows) {
    parameter->SetFlags(0x8001);
    (parameter.Get()->*row.set)(true);
    EXPECT_EQ(parameter->GetFlags(), 0x8001 | row.bit);
    EXPECT_TRUE((parameter.Get()->*row.is)());
    parameter->SetFlags(0xFFFF);
    (parameter.Get()->*row.set)(false);
    EXPECT_EQ(parameter->GetFlags(), 0xFFFF & ~row.bit);
    EXPECT_FALSE((parameter.Get()->*row.is)());
  }
}

/// What all getters answer; the GUID by its first field.
std::string ValuesOf(IZParameter* parameter) {
  const ZRefPtr<IZDMObject> element = parameter->GetElement();
  IZDMObject* target = parameter->GetRelation();
  return std::to_string(parameter->GetDouble()).substr(0, 3) + ' ' +
         std::to_string(parameter->GetGUID()->Data1 & 0xFF) + ' ' +
         (target != nullptr ? std::to_string(target->GetID()) : "-") + ' ' + StringOf(parameter) +
         ' ' + (element != nullptr ? "element" : "-") + ' ' + std::to_string(parameter->GetLong()) +
         ' ' + (parameter->GetBool() ? "true" : "false") + ' ' +
         std::to_string(parameter->GetUlongPtr());
}

TEST(Parameter, SettersMakeAValueOfTheirKindAndReportOnce) {
  Definitions db;
  const auto object = db.MakeObject(OLESTR("target"), 77);
  const struct {
    const char* name;
    std::function<void(IZParameter*)> set;
    BYTE type;
    int notices;
    const char* values;
  } rows[] = {
      {"double", [](IZParameter* p) { p->SetDouble(2.5); }, 1, 1, "2.5 0 - - - 0 false 0"},
      {"guid", [](IZParameter* p) { p->SetGUID(Key(1)); }, 2, 0, "0.0 17 - - - 0 false 0"},
      {"relation", [&](IZParameter* p) { p->SetRelation(object, true); }, 3, 1,
       "0.0 0 77 - - 0 false 0"},
      {"string", [](IZParameter* p) { p->SetString(OLESTR("t")); }, 4, 1, "0.0 0 - t - 0 false 0"},
      {"null string", [](IZParameter* p) { p->SetString(nullptr); }, 4, 1, "0.0 0 - - - 0 false 0"},
      {"element", [&](IZParameter* p) { p->SetElement(object); }, 5, 1,
       "0.0 0 - - element 0 false 0"},
      {"long", [](IZParameter* p) { p->SetLong(5); }, 6, 1, "0.0 0 - - - 5 false 0"},
      {"bool", [](IZParameter* p) { p->SetBool(true); }, 7, 1, "0.0 0 - - - 0 true 0"},
      {"pointer", [](IZParameter* p) { p->SetUlongPtr(9); }, 8, 0, "0.0 0 - - - 0 false 9"},
      {"collection",
       [](IZParameter* p) {
         ZDfReltnColl value;
         p->SetValue(&value);
       },
       9, 1, "0.0 0 - - - 0 false 0"},
      {"none", [](IZParameter* p) { p->SetValue(nullptr); }, 0, 0, "0.0 0 - - - 0 false 0"},
      {"itself", [](IZParameter* p) { p->SetValue(p->GetValue()); }, 4, 0,
       "0.0 0 - former - 0 false 0"},
  };
  for (const auto& row : rows) {
    const auto owner = zdm::MakeObject<Notified, Notified>();
    const auto array = zdm::MakeObject<IZParameterArray, CZParameterArray>();
    const auto parameter = MakeParameter();
    parameter->SetString(OLESTR("former"));
    array->SetOwner(owner.Get());
    parameter->SetOwner(array);
    row.set(parameter);
    EXPECT_EQ(TypeOf(parameter->GetValue()), row.type) << row.name;
    EXPECT_EQ(owner->notices, row.notices) << row.name;
    EXPECT_EQ(ValuesOf(parameter), row.values) << row.name;
    row.set(parameter);
    EXPECT_EQ(ValuesOf(parameter), row.values) << row.name << " again";
  }
}

TEST(Parameter, TakesAPieceOfItsOwnText) {
  const auto parameter = MakeParameter();
  parameter->SetString(OLESTR("a longer text that is not short"));
  const auto* text = dynamic_cast<ZDfCComBSTR*>(parameter->GetValue())->Value.Get();
  parameter->SetString(text + 9);
  EXPECT_EQ(StringOf(parameter), "text that is not short");
}

TEST(Parameter, TakesNameAndTypeFromItsDefinition) {
  Definitions db;
  const auto definition = db.Make(4, 25, 7);
  const auto parameter = MakeParameter(definition);
  EXPECT_EQ(NameOf(parameter), "P4");
  EXPECT_EQ(KeyOf(parameter), Key(4));
  EXPECT_EQ(parameter->GetDefinitionIndex(), 7);
  EXPECT_EQ(parameter->GetPropertyType(), 25u);
  parameter->SetDefinition(nullptr);
  parameter->SetDefinition(zdm::MakeObject<IZObject, CZParameter>());
  EXPECT_EQ(parameter->GetDefinition(), definition) << "neither is a definition to take";
  parameter->SetDefinition(db.MakeObject().Get());
  EXPECT_EQ(parameter->GetDefinition(), nullptr);
  EXPECT_EQ(NameOf(parameter), "Unknown");
}

TEST(Parameter, CopiesAllButLinkAndArray) {
  Definitions db;
  const auto source = MakeSource(db, db.Make(1));
  const auto array = zdm::MakeObject<IZParameterArray, CZParameterArray>();
  source->SetFlags(0x8034);
  source->SetKey(12);
  source->SetDouble(2.5);
  source->SetLinkedObject(ObjectOf(MakeSource(db)));
  source->SetOwner(array);
  ZRefPtr<IZParameter> copy;
  source->CloneParameter(copy.Out());
  EXPECT_EQ(copy->GetZRID(), CZParameter::kClassID);
  EXPECT_EQ(copy->GetFlags(), 0x8034);
  EXPECT_EQ(copy->GetKey(), 12);
  EXPECT_EQ(copy->GetDefinition(), source->GetDefinition());
  EXPECT_EQ(copy->GetDouble(), 2.5);
  EXPECT_EQ(copy->GetLinkedObject(), nullptr);
  EXPECT_EQ(copy->GetOwner(), nullptr);
}

TEST(Parameter, IsEqualByKeyFlagsAndValueWhateverTheDefinition) {
  Definitions db;
  const auto definition = db.Make(1);
  const auto other = db.Make(2);
  const auto none = [](IZParameter*) {};
  const struct {
    const char* name;
    std::function<void(IZParameter*)> change;
    bool equal;
  } rows[] = {
      {"same", none, true},
      {"another definition", [&](IZParameter* p) { p->SetDefinition(other); }, true},
      {"no definition", [&](IZParameter* p) { p->SetDefinition(db.MakeObject().Get()); }, false},
      {"key", [](IZParameter* p) { p->SetKey(3); }, false},
      {"flags", [](IZParameter* p) { p->SetFlag20(true); }, false},
      {"value", [](IZParameter* p) { p->SetLong(6); }, false},
      {"kind of value", [](IZParameter* p) { p->SetDouble(5); }, false},
      {"no value", [](IZParameter* p) { p->SetValue(nullptr); }, false},
  };
  for (const auto& row : rows) {
    const auto left = MakeParameter(definition);
    const auto right = MakeParameter(definition);
    left->SetLong(5);
    right->SetLong(5);
    row.change(right);
    EXPECT_EQ(left->IsEqual(right), row.equal) << row.name;
    EXPECT_EQ(right->IsEqual(left), row.equal) << row.name << " the other way";
  }
  const auto empty = MakeParameter();
  const auto flagged = MakeParameter();
  flagged->SetFlag20(true);
  EXPECT_TRUE(empty->IsEqual(flagged)) << "without values flags are not looked at";
}

TEST(ParameterLink, GivesTheNumberOfTheEnd) {
  Definitions db;
  const auto parameter = MakeParameter();
  parameter->SetDouble(1.0);
  ZRefPtr<IZParameter> chain[3] = {MakeSource(db), MakeSource(db), MakeSource(db)};
  parameter->SetLinkedObject(ObjectOf(chain[0]));
  chain[0]->SetLinkedObject(ObjectOf(chain[1]));
  chain[1]->SetLinkedObject(ObjectOf(chain[2]));
  chain[2]->SetDouble(2.5);
  EXPECT_EQ(parameter->GetDouble(), 2.5);
  EXPECT_EQ(parameter->GetLong(), 0);
  chain[1]->SetDouble(1.5);
  ObjectOf(chain[2])->SetObjectValid(false);
  EXPECT_EQ(parameter->GetDouble(), 1.5) << "a link to what is not valid is not followed";
  parameter->SetLinkedObject(db.MakeObject());
  EXPECT_EQ(parameter->GetDouble(), 1.0) << "nor to what is no parameter";
  parameter->SetLinkedObject(nullptr);
  EXPECT_EQ(parameter->GetLinkedObject(), nullptr);
}

TEST(ParameterLink, EndsInARingWithTheOwnValueOfWhereItCloses) {
  Definitions db;
  const auto definition = db.Make(1, 3);
  const ZRefPtr<IZParameter> ring[] = {MakeSource(db, definition), MakeSource(db, definition)};
  const auto outside = MakeParameter(definition);
  ring[0]->SetDouble(10);
  ring[1]->SetDouble(11);
  outside->SetDouble(12);
  ring[0]->SetLinkedObject(ObjectOf(ring[1]));
  ring[1]->SetLinkedObject(ObjectOf(ring[0]));
  outside->SetLinkedObject(ObjectOf(ring[0]));
  const struct {
    IZParameter* asked;
    double expected;
  } rows[] = {{ring[0], 10}, {ring[1], 11}, {outside, 10}};
  for (const auto& row : rows) {
    EXPECT_EQ(row.asked->GetDouble(), row.expected);
    const auto property = MakeProperty();
    property->SetGUID(Key(1));
    bool handled = false;
    EXPECT_TRUE(row.asked->FillProperty(0, property, &handled));
    EXPECT_TRUE(handled);
    EXPECT_EQ(property->GetDouble(), row.expected);
    EXPECT_TRUE(property->IsLinked());
  }
  outside->SetLinkedObject(nullptr);
  EXPECT_EQ(outside->GetDouble(), 12) << "no mark is left behind";
}

TEST(ParameterLink, IsFollowedThroughALongChain) {
  Definitions db;
  std::vector<ZRefPtr<CZDMParameter>> chain;
  const LONG length = 100000;
  for (LONG i = 0; i < length; ++i) {
    chain.push_back(zdm::MakeObject<CZDMParameter, CZDMParameter>());
    chain.back()->SetObjectValid(true);
    chain.back()->SetBool(true);
    if (i > 0) chain[static_cast<std::size_t>(i) - 1]->SetLinkedObject(chain.back().Get());
  }
  const auto definition = db.Make(1, 3);
  chain.front()->SetDefinition(definition);
  chain.back()->SetDouble(2.5);
  EXPECT_EQ(chain.front()->GetDouble(), 2.5);
  const auto property = MakeProperty();
  property->SetGUID(Key(1));
  bool handled = false;
  EXPECT_TRUE(chain.front()->FillProperty(0, property, &handled));
  EXPECT_EQ(property->GetDouble(), 2.5);
  EXPECT_EQ(chain.back()->GetDefinition(), nullptr);
}

TEST(ParameterReferences, AreOfferedLinkFirstThenDefinitionThenValue) {
  Definitions db;
  const auto definition = db.Make(1);
  const auto source = MakeSource(db);
  const auto target = db.MakeObject(nullptr, 77);
  const auto idOf = [](IZObject* object) {
    return std::to_string(zdm::ViewAs<IZDMObject>(object)->GetID()) + ' ';
  };
  const auto parameter = MakeParameter(definition);
  parameter->SetLinkedObject(ObjectOf(source));
  parameter->SetRelation(target, false);

  Offered offered;
  EXPECT_FALSE(parameter->Accept(nullptr, target, &offered));
  EXPECT_EQ(offered.ids, idOf(source) + idOf(definition) + "77 ");

  Offered stopping;
  stopping.stopAt = static_cast<LONG>(zdm::ViewAs<IZDMObject>(definition)->GetID());
  EXPECT_TRUE(parameter->Accept(nullptr, target, &stopping));
  EXPECT_EQ(stopping.ids, idOf(source) + idOf(definition));

  const auto other = db.Make(2);
  Offered moving;
  moving.newOid = zdm::ViewAs<IZDMObject>(other)->GetOID();
  parameter->Accept(nullptr, target, &moving);
  EXPECT_EQ(parameter->GetDefinition(), other);
}

}  // namespace
