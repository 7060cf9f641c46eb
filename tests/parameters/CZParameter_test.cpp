// What a parameter holds, what it reports, what it takes from its definition and along its link.
#include "tests/parameters/ValueKinds.h"
#include "tests/support/Flags.h"
#include "tests/support/IDNotes.h"
#include "zdm/parameters/CZParameterArray.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace zdm::test;

TEST(Parameter, KeepsEachFlagInItsBit) {
  using I = IZParameter;
  const auto parameter = MakeParameter();
  parameter->SetFlags(0x8001);
  ExpectFlagsApart<I>(*parameter.Get(),
                      {{0x02, &I::IsFlag02, &I::SetFlag02},
                       {0x04, &I::IsReadOnly, &I::SetReadOnly},
                       {0x08, &I::IsFlag08, &I::SetFlag08},
                       {0x10, &I::IsFlag10, &I::SetFlag10},
                       {0x20, &I::IsFlag20, &I::SetFlag20}},
                      [&] { return parameter->GetFlags(); });
}

TEST(Parameter, SettersMakeAValueOfTheirKindAndReportOnce) {
  Definitions db;
  const auto object = db.MakeObject(nullptr, 77);
  auto rows = KindsOfValues(object);
  rows.push_back(
      {"none", [](IZParameter* p) { p->SetValue(nullptr); }, 0, "0.0 0 - - - 0 false 0", {0}});
  rows.push_back({"itself",
                  [](IZParameter* p) { p->SetValue(p->GetValue()); },
                  0,
                  "0.0 0 - former - 0 false 0",
                  {4}});
  for (const KindOfValue& row : rows) {
    const auto owner = zdm::MakeObject<Notified, Notified>();
    const auto array = zdm::MakeObject<IZParameterArray, CZParameterArray>();
    const auto parameter = MakeParameter();
    parameter->SetString(OLESTR("former"));
    array->SetOwner(owner.Get());
    parameter->SetOwner(array);
    row.set(parameter);
    EXPECT_EQ(TypeOf(parameter->GetValue()), row.stored[0]) << row.name;
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
  EXPECT_TRUE(copy->IsEqual(source));
  EXPECT_EQ(copy->GetDefinition(), source->GetDefinition());
  EXPECT_EQ(copy->GetLinkedObject(), nullptr);
  EXPECT_EQ(copy->GetOwner(), nullptr);
}

TEST(Parameter, IsEqualByKeyFlagsAndValueWhateverTheDefinition) {
  Definitions db;
  const auto definition = db.Make(1);
  const auto other = db.Make(2);
  const struct {
    const char* name;
    std::function<void(IZParameter*)> change;
    bool equal;
  } rows[] = {
      {"same", [](IZParameter*) {}, true},
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
  const std::pair<IZParameter*, double> rows[] = {{ring[0], 10}, {ring[1], 11}, {outside, 10}};
  for (const auto& [asked, expected] : rows) {
    EXPECT_EQ(asked->GetDouble(), expected);
    const auto property = Offered();
    EXPECT_EQ(Fill(asked, property), kHandled);
    EXPECT_EQ(property->GetDouble(), expected);
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
  const auto property = Offered();
  EXPECT_TRUE(Fill(ZRefPtr<IZParameter>(chain.front().Get()), property).serves);
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

  IDNotes offered;
  EXPECT_FALSE(parameter->Accept(nullptr, target, &offered));
  EXPECT_EQ(offered.text, idOf(source) + idOf(definition) + "77 ");

  IDNotes stopping(static_cast<LONG>(zdm::ViewAs<IZDMObject>(definition)->GetID()));
  EXPECT_TRUE(parameter->Accept(nullptr, target, &stopping));
  EXPECT_EQ(stopping.text, idOf(source) + idOf(definition));

  const auto other = db.Make(2);
  IDNotes moving;
  moving.newTarget = zdm::ViewAs<IZDMObject>(other)->GetOID();
  parameter->Accept(nullptr, target, &moving);
  EXPECT_EQ(parameter->GetDefinition(), other);
}

}  // namespace
