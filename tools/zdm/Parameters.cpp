#include "tools/zdm/Parameters.h"

#include "document/ObjectSheet.h"
#include "platform/ole/Bstr.h"
#include "platform/ole/Variant.h"
#include "platform/system/Text.h"
#include "tools/zdm/Describe.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/properties/IZPropertyIndex.h"
#include "zdm/relations/IZSingleReltn.h"
#include "zdm/relations/ZDfValues.h"

namespace zdm::tool {

namespace {

Json Text(const Bstr& text) { return text.IsNull() ? Json(nullptr) : Json(ToUtf8(text.View())); }

/// The type in a word, and the value; a reference is the ID it leads to.
void DescribeValue(ZDfValue* value, Json* out) {
  const auto set = [&](const char* type, const Json& shown) {
    (*out)["type"] = type;
    (*out)["value"] = shown;
  };
  if (auto* real = dynamic_cast<ZDfDouble*>(value)) return set("double", Number(real->Value));
  if (auto* guid = dynamic_cast<ZDfGUID*>(value)) return set("guid", TextOf(guid->Value));
  if (auto* text = dynamic_cast<ZDfCComBSTR*>(value)) return set("string", Text(text->Value));
  if (auto* integer = dynamic_cast<ZDfLong*>(value)) return set("long", integer->Value);
  if (auto* flag = dynamic_cast<ZDfBool*>(value)) return set("bool", flag->Value);
  if (auto* number = dynamic_cast<ZDfUlongPtr*>(value)) return set("number", number->Value);
  if (auto* relation = dynamic_cast<ZDfRelation*>(value)) {
    const OID* target = relation->Value != nullptr ? relation->Value->GetReltnOID() : nullptr;
    return set("relation", target != nullptr ? Json(target->ID) : Json(nullptr));
  }
  set(value == nullptr                                ? "none"
      : dynamic_cast<ZDfElement*>(value) != nullptr   ? "element"
      : dynamic_cast<ZDfReltnColl*>(value) != nullptr ? "relations"
                                                      : "other",
      nullptr);
}

Json ShownBy(IZProperty& property) {
  Variant variant;
  property.GetVariant(variant.Out());
  const VARIANT& value = variant.Get();
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      return nullptr;
    case VT_R8:
      return Number(value.dblVal);
    case VT_I4:
      return value.lVal;
    case VT_I2:
      return property.GetLong();
    case VT_UI4:
      return value.ulVal;
    case VT_BOOL:
      return value.boolVal != VARIANT_FALSE;
    default:
      break;
  }
  if (FAILED(variant.ChangeType(VT_BSTR))) return nullptr;
  return variant.Get().bstrVal != nullptr ? Json(ToUtf8(variant.Get().bstrVal)) : Json(nullptr);
}

}  // namespace

Json Described(IZParameter& parameter) {
  GUID definition;
  Json out = {{"definition", TextOf(*parameter.GetDefinitionGUID(&definition))},
              {"key", parameter.GetKey()},
              {"flags", parameter.GetFlags()}};
  DescribeValue(parameter.GetValue(), &out);
  return out;
}

Json Parameters(IZDMObject& object) {
  Json parameters = Json::array();
  IZParameterArray* array = object.PeekParameterArray();
  for (LONG i = 0; array != nullptr && i < array->GetCount(); ++i) {
    parameters.push_back(Described(*array->GetAt(i)));
  }
  return parameters;
}

std::string LabelOf(IZProperty& property) {
  Bstr label;
  property.GetDisplayName(label.Out());
  if (label.View().empty()) property.GetName(label.Out());
  return ToUtf8(label.View());
}

Json ValueOf(IZProperty& property) {
  if (property.GetObject() == nullptr) return ShownBy(property);
  Json attached;
  DescribeValue(property.GetObject(), &attached);
  return attached["value"];
}

Json Sheet(IZDMObject& object) {
  Json groups = Json::array();
  const ObjectSheet sheet(&object);
  for (const ObjectSheet::Group& group : sheet.GetGroups()) {
    Json properties = Json::array();
    for (IZProperty* property : group.properties) {
      GUID key;
      Json& shown = properties.emplace_back(Json{{"key", TextOf(*property->GetGUID(&key))},
                                                 {"name", LabelOf(*property)},
                                                 {"value", ValueOf(*property)}});
      auto* choice = ViewAs<IZPropertyIndex>(property);
      Bstr label;
      if (choice != nullptr &&
          choice->GetEntryText(static_cast<ULONG>(choice->GetLong()), label.Out())) {
        shown["choice"] = Text(label);
      }
      shown["readOnly"] = property->IsReadOnly();
      shown["linked"] = property->IsLinked();
    }
    groups.push_back({{"name", Text(group.name)}, {"properties", std::move(properties)}});
  }
  return groups;
}

}  // namespace zdm::tool
