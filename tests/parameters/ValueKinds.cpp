#include "tests/parameters/ValueKinds.h"

#include <gtest/gtest.h>

namespace zdm::test {

std::vector<KindOfValue> KindsOfValues(IZDMObject* object) {
  using P = IZParameter*;
  const auto setCollection = [](P p) {
    ZDfReltnColl value;
    p->SetValue(&value);
  };
  return {{"double", [](P p) { p->SetDouble(2.5); }, 1, "2.5 0 - - - 0 false 0",
           Hex("01 0000000000000440")},
          {"guid", [](P p) { p->SetGUID(Key(9)); }, 0, "0.0 17 - - - 0 false 0",
           Hex("02 11111111222233334444555555555509")},
          {"relation", [=](P p) { p->SetRelation(object, true); }, 1, "0.0 0 77 - - 0 false 0",
           Hex("03 00008040 FFFFFFFF 00000000 4D000000")},
          {"string", [](P p) { p->SetString(OLESTR("a")); }, 1, "0.0 0 - a - 0 false 0",
           Hex("04 0400000061000000")},
          {"null string", [](P p) { p->SetString(nullptr); }, 1, "0.0 0 - - - 0 false 0",
           Hex("04 00000000")},
          {"element", [=](P p) { p->SetElement(object); }, 1, "0.0 0 - - element 0 false 0", {5}},
          {"long", [](P p) { p->SetLong(-2); }, 1, "0.0 0 - - - -2 false 0", Hex("06 FEFFFFFF")},
          {"bool", [](P p) { p->SetBool(true); }, 1, "0.0 0 - - - 0 true 0", {7, 1}},
          {"pointer", [](P p) { p->SetUlongPtr(9); }, 0, "0.0 0 - - - 0 false 9", {8}},
          {"collection", setCollection, 1, "0.0 0 - - - 0 false 0", {9, 0, 0, 0, 0}}};
}

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

void ExpectOfEachType(IZParameter* parameter, int index) {
  const struct {
    BYTE type;
    USHORT key;
    const char* values;
  } rows[] = {{1, 11, "2.5 0 - - - 0 false 0"},    {6, 12, "0.0 0 - - - 5 false 0"},
              {3, 13, "0.0 0 77 - - 0 false 0"},   {4, 0xFFFF, "0.0 0 - t - 0 false 0"},
              {7, 0xFFFF, "0.0 0 - - - 0 true 0"}, {2, 0xFFFF, "0.0 17 - - - 0 false 0"}};
  SCOPED_TRACE(index);
  ASSERT_NE(parameter, nullptr);
  EXPECT_EQ(TypeOf(parameter->GetValue()), rows[index].type);
  EXPECT_EQ(parameter->GetKey(), rows[index].key);
  EXPECT_EQ(ValuesOf(parameter), rows[index].values);
  EXPECT_EQ(parameter->GetFlags(), 0x20 + index);
}

}  // namespace zdm::test
