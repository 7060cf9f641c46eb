// The stored form of parameters: exact bytes for every kind of value, what comes back, and damage.
#include "tests/parameters/ParameterSupport.h"
#include "tests/support/CapturedOutput.h"

#include <gtest/gtest.h>

#include <functional>

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

constexpr BYTE kValid = 0x80;            // third byte of the status of a relation
constexpr BYTE kValidDiffusible = 0x40;  // and the fourth, where changes spread along it

/// A record without relations: flags 0x8002, key 0x0102, then the value.
Bytes RecordWith(const Bytes& value) {
  Bytes record = {0x02, 0x80, 0x02, 0x01, 0, 0};
  record.insert(record.end(), value.begin(), value.end());
  return record;
}

TEST(ParameterStream, StoresEveryKindOfValue) {
  Definitions db;
  const auto object = db.MakeObject(OLESTR("target"), 77);
  const struct {
    const char* name;
    std::function<void(IZParameter*)> set;
    Bytes value;
  } rows[] = {
      {"double", [](IZParameter* p) { p->SetDouble(2.5); }, {1, 0, 0, 0, 0, 0, 0, 4, 0x40}},
      {"guid",
       [](IZParameter* p) { p->SetGUID(Key(9)); },
       {2, 0x11, 0x11, 0x11, 0x11, 0x22, 0x22, 0x33, 0x33, 0x44, 0x44, 0x55, 0x55, 0x55, 0x55, 0x55,
        9}},
      {"relation",
       [&](IZParameter* p) { p->SetRelation(object, true); },
       {3, 0, 0, kValid, kValidDiffusible, 255, 255, 255, 255, 0, 0, 0, 0, 77, 0, 0, 0}},
      {"string", [](IZParameter* p) { p->SetString(OLESTR("a")); }, {4, 4, 0, 0, 0, 'a', 0, 0, 0}},
      {"null string", [](IZParameter* p) { p->SetString(nullptr); }, {4, 0, 0, 0, 0}},
      {"element", [&](IZParameter* p) { p->SetElement(object); }, {5}},
      {"long", [](IZParameter* p) { p->SetLong(-2); }, {6, 0xFE, 0xFF, 0xFF, 0xFF}},
      {"bool", [](IZParameter* p) { p->SetBool(true); }, {7, 1}},
      {"pointer", [](IZParameter* p) { p->SetUlongPtr(9); }, {8}},
      {"collection",
       [](IZParameter* p) {
         ZDfReltnColl value;
         p->SetValue(&value);
       },
       {9, 0, 0, 0, 0}},
  };
  for (const auto& row : rows) {
    const auto parameter = MakeParameter();
    parameter->SetFlags(0x8002);
    parameter->SetKey(0x0102);
    row.set(parameter);
    const Bytes record = RecordWith(row.value);
    EXPECT_EQ(BytesOf(parameter, &db), record) << row.name;

    const auto loaded = MakeParameter();
    loaded->SetGUID(Key(1));
    ASSERT_EQ(LoadFrom(loaded, record, &db), S_OK) << row.name;
    EXPECT_EQ(BytesOf(loaded, &db), record) << row.name;

    for (std::size_t length = 0; length < record.size(); ++length) {
      const Bytes cut(record.begin(), record.begin() + static_cast<std::ptrdiff_t>(length));
      EXPECT_EQ(LoadFrom(MakeParameter(), cut, &db), E_FAIL) << row.name << " cut at " << length;
    }
  }
}

TEST(ParameterStream, StoresDefinitionAndLink) {
  Definitions db;
  const auto definition = db.Make(1);
  const auto source = MakeSource(db);
  const BYTE definitionID = static_cast<BYTE>(zdm::ViewAs<IZDMObject>(definition)->GetID());
  const BYTE sourceID = static_cast<BYTE>(ObjectOf(source)->GetID());
  const auto parameter = MakeParameter(definition);
  parameter->SetLinkedObject(ObjectOf(source));
  parameter->SetBool(false);
  const Bytes record = {0x0A, 0,   0xFF, 0xFF,  //
                        1,    0,   0,    kValid,       kValidDiffusible,
                        255,  255, 255,  255,          0,
                        0,    0,   0,    definitionID, 0,
                        0,    0,  //
                        1,    0,   0,    kValid,       0,
                        255,  255, 255,  255,          0,
                        0,    0,   0,    sourceID,     0,
                        0,    0,  //
                        7,    0};
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
