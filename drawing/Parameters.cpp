#include "drawing/Parameters.h"

#include "drawing/CZDMDrawingBlock.h"
#include "drawing/CZDMDrawingInsert.h"
#include "drawing/CZDMDrawingSection.h"
#include "drawing/GroupCodes.h"
#include "drawing/GroupReader.h"
#include "drawing/Numbers.h"
#include "zdm/parameters/IZParameter.h"
#include "zdm/parameters/IZParameterArray.h"

#include <algorithm>
#include <unordered_set>
#include <variant>

namespace zdm {

namespace {

using Value = std::variant<WideString, double, LONG, bool>;

constexpr LONG kTextCode = 1;
constexpr LONG kTagCode = 2;
constexpr std::size_t kLongestText = 0x10000;

/// No value for a text that is not of the type of its code.
std::optional<Value> ValueOf(const Group& group, const TextCodec& codec, bool* comma = nullptr) {
  switch (TypeOf(group.code)) {
    case GroupType::kReal:
      if (const auto real = ParseReal(group.text, comma)) return *real;
      return std::nullopt;
    case GroupType::kInteger:
      if (const auto number = ParseLong(group.text)) return *number;
      return std::nullopt;
    case GroupType::kFlag: {
      const auto number = ParseLong(group.text);
      if (number == 0 || number == 1) return *number == 1;
      return std::nullopt;
    }
    default:
      if (group.text.size() > kLongestText) return std::nullopt;
      return codec.Show(group.text);
  }
}

Value ValueOf(IZParameter& parameter, LONG code) {
  switch (TypeOf(code)) {
    case GroupType::kReal:
      return parameter.GetDouble();
    case GroupType::kInteger:
      return parameter.GetLong();
    case GroupType::kFlag:
      return parameter.GetBool();
    default: {
      Bstr text;
      parameter.GetString(text.Out());
      return WideString(text.View());
    }
  }
}

std::string TextOf(const Value& value, const TextCodec& codec) {
  if (const auto* text = std::get_if<WideString>(&value)) return codec.Write(*text);
  if (const auto* real = std::get_if<double>(&value)) return RealText(*real);
  if (const auto* number = std::get_if<LONG>(&value)) return std::to_string(*number);
  return std::get<bool>(value) ? "1" : "0";
}

/// Adds parameters to the array of one object.
class Filler {
 public:
  explicit Filler(IZDMObject& object) {
    object.GetParameterArray(array_.Out());
    if (array_ == nullptr) throw CAtlException(E_FAIL);
    array_->BeginAdd();
  }
  ~Filler() { array_->EndAdd(); }
  Filler(const Filler&) = delete;
  Filler& operator=(const Filler&) = delete;

  void Add(IZDMObject* definition, USHORT key, const Value& value) {
    ZRefPtr<IZParameter> parameter;
    array_->CreateParameter(parameter.Out());
    if (parameter == nullptr) throw CAtlException(E_OUTOFMEMORY);
    parameter->SetDefinition(definition);
    parameter->SetKey(key);
    if (const auto* text = std::get_if<WideString>(&value)) parameter->SetString(text->c_str());
    if (const auto* real = std::get_if<double>(&value)) parameter->SetDouble(*real);
    if (const auto* number = std::get_if<LONG>(&value)) parameter->SetLong(*number);
    if (const auto* flag = std::get_if<bool>(&value)) parameter->SetBool(*flag);
    array_->Add(parameter, 0);
  }

 private:
  ZRefPtr<IZParameterArray> array_;
};

/// Views of their own: handles, names that relations or the object have, the marks of structure.
bool IsPlain(const DrawingPart& part, bool isNamed, LONG code) {
  const std::string_view type = part.Type();
  const GroupType kind = TypeOf(code);
  if (code <= kTypeCode || code >= kCommentCode || kind == GroupType::kHandle ||
      kind == GroupType::kBytes || code == kLayerCode || code == kVariableCode ||
      code == kSubclassCode || code == kBraceCode) {
    return false;
  }
  if (type == "BLOCK") return code != kNameCode && code != 3;
  if (type == "LAYER" && (code == 6 || code == 62)) return false;
  return code != kNameCode || (!isNamed && !RefersToBlock(type));
}

bool IsNamed(IZDMObject& object) {
  const DrawingPart* owner = PartOf(object.GetOwner());
  return owner != nullptr && owner->Type() == "TABLE";
}

/// The places of the groups that occur once, by code; in front of what others attach.
std::unordered_map<LONG, ULONG> PlacesOf(const DrawingPart& part, bool isNamed) {
  std::unordered_map<LONG, ULONG> places;
  std::unordered_set<LONG> repeated;
  ULONG index = 0;
  bool isInBraces = false;
  for (const Group group : part.Groups()) {
    if (index == part.Tail() || group.code >= kFirstExtendedCode) break;
    if (group.code == kBraceCode) isInBraces = group.text.starts_with('{');
    if (!isInBraces && IsPlain(part, isNamed, group.code) &&
        !places.emplace(group.code, index).second) {
      repeated.insert(group.code);
    }
    ++index;
  }
  std::erase_if(places, [&](const auto& place) { return repeated.contains(place.first); });
  return places;
}

bool HasParameters(IZDMObject& object, const DrawingPart& part) {
  return part.Place() == 0 && !part.Groups().IsEmpty() &&
         dynamic_cast<CZDMDrawingSection*>(&object) == nullptr;
}

/// What an insert or a block says of the attribute of that tag: "" changes nothing.
std::optional<WideString> TextOfTag(IZDMObject* owner, const WideString& tag) {
  IZParameter* parameter = owner != nullptr ? owner->GetParameter(KeyOfTag(tag)) : nullptr;
  if (parameter == nullptr) return std::nullopt;
  return std::get<WideString>(ValueOf(*parameter, kTextCode));
}

bool IsAttribute(std::string_view type) { return type == "ATTRIB" || type == "ATTDEF"; }

}  // namespace

void Parameters::Make(IZDMObject& object, ULONG line) {
  const DrawingPart& part = *PartOf(&object);
  if (!HasParameters(object, part)) return;
  const std::vector<Group> groups = part.Groups().All();
  const std::unordered_map<LONG, ULONG> places = PlacesOf(part, IsNamed(object));
  if (!places.empty()) {
    Filler filler(object);
    for (const auto& [code, index] : places) {
      bool comma = false;
      const std::string_view text = groups[index].text;
      const std::optional<Value> value = ValueOf(groups[index], codec_, &comma);
      if (comma) warnings_.Add(WarningCode::kDecimalComma, line, text);
      if (value) {
        filler.Add(definitions_.ForCode(code), static_cast<USHORT>(code), *value);
      } else if (text.size() > kLongestText) {
        warnings_.Add(WarningCode::kLongText, line, text);
      } else if (!ParseReal(text)) {
        warnings_.Add(WarningCode::kBadNumber, line, text);
      }
    }
  }
  const bool hasAttributes = dynamic_cast<CZDMDrawingBlock*>(&object) != nullptr ||
                             dynamic_cast<CZDMDrawingInsert*>(&object) != nullptr;
  if (hasAttributes) MakeOfAttributes(*ViewAs<IZDMObjMgr>(&object));
}

void Parameters::MakeOfAttributes(IZDMObjMgr& manager) {
  std::optional<Filler> filler;
  std::unordered_set<WideString> tags;
  for (LONGLONG pos = manager.GetValidHeadPosition(); pos != 0;) {
    const DrawingPart* part = PartOf(manager.GetValidNext(pos));
    if (part == nullptr || !IsAttribute(part->Type())) continue;
    const WideString tag = codec_.Show(Trimmed(part->Groups().Find(kTagCode)));
    const std::string_view text = part->Groups().Find(kTextCode);
    if (tag.empty() || text.size() > kLongestText || !tags.insert(NameKey(tag)).second) continue;
    if (!filler) filler.emplace(manager);
    filler->Add(definitions_.ForTag(tag), kTextCode, codec_.Show(text));
  }
}

void CollectParameterEdits(IZDMObject& object, const DrawingPart& part, const TextCodec& codec,
                           GroupEdits* edits) {
  if (IsAttribute(part.Type())) {
    const std::string_view written = part.Groups().Find(kTextCode);
    const WideString tag = codec.Show(Trimmed(part.Groups().Find(kTagCode)));
    const auto text = TextOfTag(object.GetOwner(), tag);
    const ULONG index = part.Groups().IndexOf(kTextCode);
    if (text && index < part.Tail() && *text != codec.Show(written)) {
      (*edits)[index] = codec.Write(*text);
    }
  }
  IZParameterArray* array = object.PeekParameterArray();
  const LONG count = array != nullptr && HasParameters(object, part) ? array->GetCount() : 0;
  if (count == 0) return;
  const std::vector<Group> groups = part.Groups().All();
  const std::unordered_map<LONG, ULONG> places = PlacesOf(part, IsNamed(object));
  for (LONG i = 0; i < count; ++i) {
    IZParameter* parameter = array->GetAt(i);
    GUID key = {};
    const std::optional<LONG> code = CodeOfKey(*parameter->GetDefinitionGUID(&key));
    const auto place = code ? places.find(*code) : places.end();
    if (place == places.end()) continue;
    const Value now = ValueOf(*parameter, *code);
    const std::optional<Value> read = ValueOf(groups[place->second], codec);
    if (!read || *read != now) (*edits)[place->second] = TextOf(now, codec);
  }
}

}  // namespace zdm
