#include "tools/zdm/Describe.h"

#include "document/CZDMAbsentObject.h"
#include "document/CZDocument.h"
#include "document/Crc32c.h"
#include "document/DocumentError.h"
#include "document/StreamOver.h"
#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"
#include "tools/zdm/CategoryValues.h"
#include "tools/zdm/Definitions.h"
#include "tools/zdm/ExtendedData.h"
#include "tools/zdm/Parameters.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/categories/IZCategoryReltn.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDefinition.h"
#include "zdm/model/IZDefinitionMgr.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/relations/IZReltnColl.h"

#include <algorithm>
#include <cstdio>

namespace zdm::tool {

namespace {

std::string Hex(ULONGLONG value, int digits) {
  char text[24];
  std::snprintf(text, sizeof(text), "0x%0*llX", digits, static_cast<unsigned long long>(value));
  return text;
}

/// Calls `action(IZRelation&)` for every element of a collection, which may be null.
template <class Action>
void ForEach(IZReltnColl* relations, Action action) {
  for (LONGLONG pos = relations != nullptr ? relations->GetHeadPosition() : 0; pos != 0;) {
    if (IZRelation* relation = relations->GetNext(pos)) action(*relation);
  }
}

/// Those below a category relation follow it; their depth in a file is bounded.
Json RelationFields(IZRelation& relation) {
  Json fields = {{"class", relation.getZRClass()->GetName()},
                 {"status", Hex(static_cast<ULONG>(relation.GetReltnStatus()), 8)},
                 {"tag", relation.GetReltnTag()},
                 {"targets", Json::array()}};
  auto* toCategory = ViewAs<IZCategoryReltn>(&relation);
  if (toCategory == nullptr) return fields;
  if (const OID* target = toCategory->GetReltnOID()) fields["targets"].push_back(target->ID);
  fields["values"] = CategoryReltnValues(*toCategory);
  ForEach(toCategory->GetSubReltns(),
          [&](IZRelation& sub) { fields["below"].push_back(RelationFields(sub)); });
  return fields;
}

Json Relations(IZDMObject& object) {
  Json rows = Json::array();
  const std::vector<Reference> references = ReferencesOf(&object);
  ForEach(object.GetReltnColl(), [&](IZRelation& relation) {
    Json& row = rows.emplace_back(RelationFields(relation));
    if (!row["targets"].empty()) return;
    for (const Reference& reference : references) {
      if (reference.relation == &relation) row["targets"].push_back(reference.to->ID);
    }
  });
  return rows;
}

/// As it would be saved now.
Json Record(CZDocument& document, IZDMObject& object) {
  BytesStream bytes;
  const auto stream = StreamOver(bytes);
  if (FrameKindOf(&object) == FrameKind::kNone) {
    object.Save(stream, &document);
  } else {
    SaveFrame(document, &object, stream);
  }
  stream->GetIStream();  // flushed
  return {{"bytes", bytes.bytes.size()}, {"checksum", Hex(Crc32c(bytes.bytes), 8)}};
}

bool IsScalar(const Json& value) { return value.is_primitive(); }

/// Free text is quoted, so that it cannot pass for anything else.
std::string Word(const std::string& key, const Json& value) {
  if (value.is_null()) return "-";
  if (!value.is_string()) return value.dump();
  const auto text = value.get<std::string>();
  for (const char* free : {"name", "value", "choice", "own", "category", "group"}) {
    if (key == free) return Quoted(text);
  }
  return Escaped(text);
}

std::string Words(const std::string& key, const Json& values) {
  std::string text;
  for (const Json& value : values) text += (text.empty() ? "" : ",") + Word(key, value);
  return text.empty() ? "-" : text;
}

void AppendLines(const std::string& path, const Json& value, std::vector<std::string>* out) {
  if (value.is_array()) {
    for (const Json& element : value) AppendLines(path, element, out);
    return;
  }
  if (!value.is_object()) {
    out->push_back(path + ' ' + Word(path, value));
    return;
  }
  const std::size_t line = out->size();
  out->push_back(path);
  for (const auto& [key, member] : value.items()) {
    if (member.is_array() && !std::ranges::all_of(member, IsScalar)) {
      AppendLines(path + '.' + key, member, out);
    } else {
      (*out)[line] +=
          ' ' + key + '=' + (member.is_array() ? Words(key, member) : Word(key, member));
    }
  }
}

}  // namespace

std::string TextOf(const GUID& guid) {
  OLECHAR text[39];
  StringFromGUID2(guid, text, 39);
  return ToUtf8(text);
}

Json NameOf(IZDMObject& object) {
  Bstr name;
  object.GetName(name.Out());
  return name.IsNull() ? Json(nullptr) : Json(ToUtf8(name.View()));
}

std::string ClassOf(IZDMObject& object) {
  const auto* absent = dynamic_cast<CZDMAbsentObject*>(&object);
  if (absent != nullptr) return "absent class " + TextOf(absent->GetAbsentClassID());
  return object.getZRClass()->GetName();
}

Json Brief(const OID& oid) {
  Json brief = {{"id", oid.ID}, {"name", nullptr}, {"class", nullptr}};
  if (oid.Object == nullptr) return brief;
  brief["name"] = NameOf(*oid.Object);
  brief["class"] = ClassOf(*oid.Object);
  return brief;
}

std::string BriefLine(const OID& oid) {
  std::string line = Painted(Colour::kCyan, std::to_string(oid.ID));
  if (oid.Object == nullptr) return line + " (no object)";
  const Json name = NameOf(*oid.Object);
  if (!name.is_null()) line += ' ' + Quoted(name.get<std::string>());
  line += ' ' + Painted(Colour::kDim, ClassOf(*oid.Object));
  return oid.JudgeStatus(ZOS_VALID) ? line : line + " (not valid)";
}

Json Fields(CZDocument& document, IZDMObject& object) {
  const OID& oid = *object.GetOID();
  Json fields = {{"id", oid.ID}, {"class", object.getZRClass()->GetName()}};
  if (const auto* absent = dynamic_cast<CZDMAbsentObject*>(&object)) {
    fields["absentClass"] = TextOf(absent->GetAbsentClassID());
    fields["opaque"] = absent->IsOpaque();
  }
  fields["owner"] = static_cast<LONG>(object.GetOwnerID());
  fields["type"] = object.GetTypeByte();
  fields["options"] = Hex(static_cast<ULONGLONG>(oid.OptionAllowed), 16);
  fields["status"] = Hex(oid.Status.to_ullong(), 16);
  fields["word1"] = oid.AuxWord1;
  fields["word2"] = oid.AuxWord2;
  fields["name"] = NameOf(object);
  if (auto* category = ViewAs<IZCategory>(&object)) fields["category"] = CategoryFields(*category);
  fields["relations"] = Relations(object);
  fields["data"] = ExtendedData(object);
  if (auto* definition = ViewAs<IZDefinition>(&object)) {
    fields["definition"] = Described(*definition);
  }
  if (auto* parameter = ViewAs<IZParameter>(&object)) fields["parameter"] = Described(*parameter);
  fields["parameters"] = Parameters(object);
  fields["sheet"] = Sheet(object);
  if (auto* manager = ViewAs<IZDMObjMgr>(&object)) {
    const IZDMObject* current = manager->GetCurrent();
    fields["current"] = current != nullptr ? Json(manager->GetCurrent()->GetOID()->ID) : Json();
    Json& holds = fields["holds"] = Json::array();
    for (LONGLONG pos = manager->GetHeadPosition(); pos != 0;) {
      if (IZDMObject* held = manager->GetNext(pos)) holds.push_back(held->GetOID()->ID);
    }
  }
  if (auto* definitions = ViewAs<IZDefinitionMgr>(&object)) {
    fields["groups"] = Groups(*definitions);
  }
  fields["record"] = Record(document, object);
  return fields;
}

std::vector<std::string> Lines(const Json& fields) {
  std::vector<std::string> lines;
  for (const auto& [key, value] : fields.items()) AppendLines(key, value, &lines);
  return lines;
}

}  // namespace zdm::tool
