#include "tools/zdm/CategoryValues.h"

#include "document/DispValues.h"
#include "platform/system/Text.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/categories/IZCategoryReltn.h"
#include "zdm/framework/QueryZInterface.h"
#include "zdm/host/IZDispAttrib.h"
#include "zdm/host/ZGiHatchData.h"
#include "zdm/identity/OID.h"
#include "zdm/relations/IZReltnColl.h"

#include <string>

namespace zdm::tool {

namespace {

Json TextOrNull(const Bstr& text) {
  return text.IsNull() ? Json(nullptr) : Json(ToUtf8(text.View()));
}

/// Null members for an attribute that is not there.
Json AttributeFields(IZDispAttrib* attribute) {
  auto* source = dynamic_cast<DispValueSource*>(attribute);
  if (source == nullptr) return Json::object();
  const DispValues values = source->GetValues();
  return {{"color", values.color},
          {"lineType", TextOrNull(values.lineType)},
          {"lineTypeScale", values.lineTypeScale},
          {"lineWeight", values.lineWeight},
          {"visible", values.isVisible}};
}

Json HatchFields(const ZGiHatchData& hatch) {
  return {{"pattern", TextOrNull(hatch.Pattern)}, {"values", hatch.Values}};
}

/// What a category and a relation to it both have.
template <class T>
Json SharedFields(T& holder) {
  return {{"projection", AttributeFields(holder.GetProjectionDispAttrib())},
          {"section", AttributeFields(holder.GetSectionDispAttrib())},
          {"hatchA", HatchFields(*holder.GetHatchA())},
          {"hatchB", HatchFields(*holder.GetHatchB())}};
}

Json FieldsOf(IZCategoryReltn& relation) {
  Json fields = {{"visible", relation.IsVisible(kCategoryDraw, nullptr)},
                 {"flag02", relation.IsFlag02()},
                 {"flag04", relation.IsFlag04()},
                 {"flag08", relation.IsFlag08()},
                 {"level", relation.GetLevel()}};
  fields.update(SharedFields(relation));
  return fields;
}

/// Under the relation's names; it has no flag 02.
Json FieldsOf(IZCategory& category) {
  Json fields = {{"visible", category.IsCategoryVisible()},
                 {"flag04", category.IsFlag0200()},
                 {"flag08", category.IsFlag0080()},
                 {"level", category.GetLevel()}};
  fields.update(SharedFields(category));
  return fields;
}

void AppendBeside(const std::string& path, const Json& own, const Json& category, Json* rows) {
  for (const auto& [key, value] : own.items()) {
    const Json other = category.is_object() ? category.value(key, Json()) : Json();
    if (value.is_object()) {
      AppendBeside(path + key + '.', value, other, rows);
    } else {
      rows->push_back({{"field", path + key}, {"own", value}, {"category", other}});
    }
  }
}

}  // namespace

Json CategoryFields(IZCategory& category) {
  IZCategory* parent = category.GetParentCategory();
  Json members = Json::array();
  IZReltnColl* relations = category.GetMemberColl();
  for (LONGLONG pos = relations != nullptr ? relations->GetHeadPosition() : 0; pos != 0;) {
    auto* relation = ViewAs<IZSingleReltn>(relations->GetNext(pos));
    const OID* member = relation != nullptr ? relation->GetReltnOID() : nullptr;
    if (member != nullptr) members.push_back(member->ID);
  }
  return {{"number", category.GetNumber()},
          {"parent", parent != nullptr ? Json(parent->GetOID()->ID) : Json()},
          {"members", std::move(members)},
          {"visible", category.IsCategoryVisible()},
          {"level", category.GetLevel()}};
}

Json CategoryReltnValues(IZCategoryReltn& relation) {
  Json rows = Json::array();
  IZCategory* category = relation.GetCategory();
  AppendBeside("", FieldsOf(relation), category != nullptr ? FieldsOf(*category) : Json(), &rows);
  return rows;
}

}  // namespace zdm::tool
