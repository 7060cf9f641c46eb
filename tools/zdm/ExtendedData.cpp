#include "tools/zdm/ExtendedData.h"

#include "document/Crc32c.h"
#include "platform/core/CZRClass.h"
#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"
#include "tools/zdm/Describe.h"
#include "zdm/extdata/ExtDataType.h"
#include "zdm/extdata/IZExtDataAccess.h"
#include "zdm/extdata/IZExtDataCollection.h"
#include "zdm/extdata/IZExtDataMgr.h"
#include "zdm/extdata/IZProxyExtDataObj.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/model/IZDMObject.h"

namespace zdm::tool {

namespace {

template <class T>
T Got(IZExtDataAccess& item, LONG (IZExtDataAccess::*get)(T*)) {
  T value = {};
  (item.*get)(&value);
  return value;
}

Json Items(IZExtDataCollection& collection);

void DescribeValue(IZExtDataAccess& item, Json* out) {
  const auto set = [&](const char* type, const Json& value) {
    (*out)["type"] = type;
    (*out)["value"] = value;
  };
  switch (Got(item, &IZExtDataAccess::GetType)) {
    case kExtByte:
      return set("byte", Got(item, &IZExtDataAccess::GetByte));
    case kExtShort:
      return set("short", Got(item, &IZExtDataAccess::GetShort));
    case kExtFloat:
      return set("float", Number(Got(item, &IZExtDataAccess::GetFloat)));
    case kExtLong:
      return set("long", Got(item, &IZExtDataAccess::GetLong));
    case kExtULong:
      return set("ulong", Got(item, &IZExtDataAccess::GetULong));
    case kExtDouble:
      return set("double", Number(Got(item, &IZExtDataAccess::GetDouble)));
    case kExtBool:
      return set("bool", Got(item, &IZExtDataAccess::GetBool));
    case kExtString: {
      Bstr text;
      item.GetString(text.Out());
      return set("string", text.IsNull() ? Json(nullptr) : Json(ToUtf8(text.View())));
    }
    case kExtCollection: {
      (*out)["type"] = "collection";
      IZExtDataCollection* items = Got(item, &IZExtDataAccess::GetCollection);
      (*out)["items"] = items != nullptr ? Items(*items) : Json::array();
      return;
    }
    case kExtObject:
      return set("object", nullptr);
    default:
      return set("none", nullptr);
  }
}

void DescribeBytes(IZProxyExtDataObj& item, Json* out) {
  void* data = nullptr;
  const int length = item.GetData(&data);
  const std::span bytes(static_cast<const BYTE*>(data), static_cast<std::size_t>(length));
  (*out)["type"] = "custom";
  (*out)["class"] = TextOf(*item.GetClassID());
  (*out)["bytes"] = length;
  (*out)["checksum"] = Crc32c(bytes);
  CoTaskMemFree(data);
}

Json Described(IZExtData& item) {
  Json out;
  Bstr name;
  item.GetName(name.Out());
  out["name"] = name.IsNull() ? Json(nullptr) : Json(ToUtf8(name.View()));
  if (auto* access = ViewAs<IZExtDataAccess>(&item)) {
    DescribeValue(*access, &out);
  } else if (auto* proxy = ViewAs<IZProxyExtDataObj>(&item)) {
    DescribeBytes(*proxy, &out);
  } else {
    out["type"] = "custom";
    out["class"] = item.getZRClass()->GetName();
  }
  return out;
}

Json Items(IZExtDataCollection& collection) {
  Json items = Json::array();
  for (LONGLONG pos = collection.GetHeadPosition(); pos != 0;) {
    if (IZExtData* item = collection.GetNext(pos)) items.push_back(Described(*item));
  }
  return items;
}

std::vector<GUID> Keys(IZExtDataMgr& manager) {
  SAFEARRAY* array = nullptr;
  manager.GetKeys(&array);
  LONG last = -1;
  SafeArrayGetUBound(array, 1, &last);
  std::vector<GUID> keys;
  for (LONG i = 0; i <= last; ++i) {
    Bstr text;
    GUID key = {};
    if (FAILED(SafeArrayGetElement(array, &i, text.Out()))) break;
    if (SUCCEEDED(CLSIDFromString(text.Get(), &key))) keys.push_back(key);
  }
  SafeArrayDestroy(array);
  return keys;
}

}  // namespace

Json ExtendedData(IZDMObject& object) {
  Json data = Json::array();
  IZExtDataMgr* manager = object.GetExtDataMgr();
  if (manager == nullptr) return data;
  for (const GUID& key : Keys(*manager)) {
    IZExtDataCollection* collection = manager->GetCollection(key);
    if (collection == nullptr) continue;
    for (const Json& item : Items(*collection)) {
      Json entry = {{"key", TextOf(key)}};
      entry.update(item);
      data.push_back(std::move(entry));
    }
  }
  return data;
}

}  // namespace zdm::tool
