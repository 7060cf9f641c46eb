#include "zdm/properties/CZPropKeyArray.h"

#include <algorithm>

ZDM_OBJECT_BODY(CZPropKeyArray)

const GUID* CZPropKeyArray::AddKey(const GUID& key) {
  const auto present = std::find(keys_.begin(), keys_.end(), key);
  return present != keys_.end() ? &*present : &keys_.emplace_back(key);
}
