// Values of each type, as parameters make, answer and store them.
#pragma once

#include "tests/parameters/ParameterSupport.h"
#include "zdm/relations/ZDfValues.h"

#include <functional>

namespace zdm::test {

/// A value of one type: how it comes about, what the getters answer then, and how it is stored.
struct KindOfValue {
  const char* name;
  std::function<void(IZParameter*)> set;
  int notices;         // to the owner of the parameter
  const char* values;  // ValuesOf
  Bytes stored;        // type and value
};

/// Of each type that there is.
/// @param object  of ID 77.
std::vector<KindOfValue> KindsOfValues(IZDMObject* object);

/// What all getters answer; the GUID by its first byte.
std::string ValuesOf(IZParameter* parameter);

/// Adds a parameter of each type, of the definitions 1 to 6, to an array or a manager.
template <class To>
void AddOfEachType(To& to, Definitions& db, IZDMObject* target) {
  ZDfGUID value;
  value.Value = Key(9);
  GUID keys[6];
  for (BYTE i = 0; i < 6; ++i) {
    keys[i] = Key(static_cast<BYTE>(i + 1));
    db.Make(static_cast<BYTE>(i + 1));
  }
  to.AddDoubleParameter(db.manager, &keys[0], 11, 2.5, 0x20);
  to.AddLongParameter(db.manager, &keys[1], 12, 5, 0x21);
  to.AddRelationParameter(db.manager, &keys[2], 13, target, true, 0x22);
  to.AddStringParameter(db.manager, &keys[3], OLESTR("t"), 0x23);
  to.AddBoolParameter(db.manager, &keys[4], true, 0x24);
  to.AddValueParameter(db.manager, &keys[5], &value, 0x25);
}

/// Number `index` of what AddOfEachType added; the relation is to an object of ID 77.
void ExpectOfEachType(IZParameter* parameter, int index);

}  // namespace zdm::test
