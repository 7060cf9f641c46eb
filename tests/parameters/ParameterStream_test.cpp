// The stored form of parameters: exact bytes for every kind of value, what comes back, and damage.
#include "tests/parameters/ValueKinds.h"
#include "tests/support/CapturedOutput.h"

#include <gtest/gtest.h>

namespace {

using namespace zdm::test;

Bytes BytesOf(IZParameter* parameter, IZDatabase* database = nullptr) {
  ByteStream stream;
  parameter->Save(&stream, database);
  return stream.GetBytes();
}

HRESULT LoadFrom(IZParameter* parameter, Bytes bytes, IZDatabase* database = nullptr) {
  ByteStream stream(std::move(bytes));
  return Thrown([&] { parameter->Load(&stream, database); });
}

/// A record without relations: flags 0x8002, key 0x0102, then the value.
Bytes RecordWith(const Bytes& value) { return Join({{0x02, 0x80, 0x02, 0x01, 0, 0}, value}); }

TEST(ParameterStream, StoresEveryKindOfValue) {
  Definitions db;
  const auto object = db.MakeObject(nullptr, 77);
  for (const KindOfValue& row : KindsOfValues(object)) {
    SCOPED_TRACE(row.name);
    const auto parameter = MakeParameter();
    parameter->SetFlags(0x8002);
    parameter->SetKey(0x0102);
    row.set(parameter);
    const Bytes record = RecordWith(row.stored);
    EXPECT_EQ(BytesOf(parameter, &db), record);

    const auto loaded = MakeParameter();
    loaded->SetGUID(Key(1));
    ASSERT_EQ(LoadFrom(loaded, record, &db), S_OK);
    EXPECT_EQ(BytesOf(loaded, &db), record);
    for (std::size_t length = 0; length < record.size(); ++length) {
      EXPECT_EQ(LoadFrom(MakeParameter(), Cut(record, length), &db), E_FAIL) << length;
    }
  }
}

TEST(ParameterStream, StoresDefinitionAndLink) {
  Definitions db;
  const auto definition = db.Make(1);
  const auto source = MakeSource(db);
  const auto parameter = MakeParameter(definition);
  parameter->SetLinkedObject(ObjectOf(source));
  parameter->SetBool(false);
  const Bytes record = Join({Hex("0A00FFFF 01 00008040 FFFFFFFF 00000000"),
                             Raw(zdm::ViewAs<IZDMObject>(definition)->GetID()),
                             Hex("01 00008000 FFFFFFFF 00000000"),
                             Raw(ObjectOf(source)->GetID()),
                             {7, 0}});
  EXPECT_EQ(BytesOf(parameter, &db), record);

  const auto loaded = MakeParameter();
  ASSERT_EQ(LoadFrom(loaded, record, &db), S_OK);
  EXPECT_EQ(loaded->GetDefinition(), definition);
  EXPECT_EQ(loaded->GetLinkedObject(), ObjectOf(source));

  Bytes none = record;
  none[4] = 2;  // any byte but 1: nothing follows, and what there was stays
  none.erase(none.begin() + 5, none.begin() + 21);
  const auto former = db.Make(2);
  const auto kept = MakeParameter(former);
  ASSERT_EQ(LoadFrom(kept, none, &db), S_OK);
  EXPECT_EQ(kept->GetDefinition(), former);
  EXPECT_EQ(kept->GetLinkedObject(), ObjectOf(source));
}

TEST(ParameterStream, ReportsAValueOfUnknownTypeAndGoesOn) {
  Definitions db;
  for (const BYTE type : {BYTE{0}, BYTE{10}, BYTE{200}}) {
    zdm::CapturedOutput output;
    const auto parameter = MakeParameter();
    parameter->SetLong(5);
    const std::string number = std::to_string(type);
    EXPECT_EQ(LoadFrom(parameter, RecordWith({type}), &db), S_OK);
    EXPECT_EQ(parameter->GetValue(), nullptr);
    EXPECT_EQ(parameter->GetFlags(), 0x8002);
    ASSERT_EQ(output.Messages().size(), 1u) << number;
    EXPECT_EQ(output.Messages()[0].text, number);
    EXPECT_EQ(output.Messages()[0].caption, number);
    EXPECT_EQ(output.Messages()[0].flags, 0u);
    EXPECT_EQ(BytesOf(parameter, &db), RecordWith({0}));
  }
}

TEST(ParameterStream, IsTheOwnDataOfAParameterObject) {
  Definitions db;
  const auto parameter = zdm::MakeObject<CZDMParameter, CZDMParameter>();
  db.Add(parameter.Get());
  IZParameter* side = zdm::ViewAs<IZParameter>(parameter.Get());
  IZDMObject* object = parameter.Get();
  side->SetKey(7);
  side->SetDouble(2.5);
  const Bytes own = BytesOf(side, &db);
  const Bytes whole = zdm::test::BytesOf(*object, &db);
  ASSERT_EQ(whole.size(), 41 + 4 + 3 + own.size());
  EXPECT_TRUE(std::equal(own.begin(), own.end(), whole.begin() + 48));
  const auto loaded = zdm::MakeObject<CZDMParameter, CZDMParameter>();
  IZDMObject* loadedObject = loaded.Get();
  EXPECT_EQ(LoadBytes(*loadedObject, whole, &db), whole.size());
  EXPECT_EQ(loaded->GetDouble(), 2.5);
  EXPECT_EQ(loaded->GetKey(), 7);
}

}  // namespace
