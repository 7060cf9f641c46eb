#include "drawing/GroupDefinitions.h"

#include "document/CZDocument.h"
#include "drawing/ExtendedData.h"
#include "drawing/GroupCodes.h"
#include "zdm/model/CZDefinition.h"
#include "zdm/model/CZDefinitionMgr.h"
#include "zdm/properties/CZProperty.h"
#include "zdm/properties/PropertyType.h"

#include <algorithm>
#include <array>

namespace zdm {

namespace {

constexpr GUID kFamily = ParseGuid("00000000-FCB2-490F-8A18-989C6412134C");  // of group codes

enum SheetGroup : LONG { kGeneral, kGeometry, kText, kAttributes, kOther };

constexpr std::array<const OLECHAR*, 5> kGroupNames = {OLESTR("General"), OLESTR("Geometry"),
                                                       OLESTR("Text"), OLESTR("Attributes"),
                                                       OLESTR("Other values")};

struct CodeName {
  LONG code;
  SheetGroup group;
  const OLECHAR* name;
};

// What a code means depends on the record; these are what it means in most.
constexpr CodeName kNames[] = {
    {1, kText, OLESTR("Text")},
    {2, kText, OLESTR("Name")},
    {3, kText, OLESTR("Second text")},
    {6, kGeneral, OLESTR("Line type")},
    {7, kText, OLESTR("Text style")},
    {10, kGeometry, OLESTR("X")},
    {20, kGeometry, OLESTR("Y")},
    {30, kGeometry, OLESTR("Z")},
    {11, kGeometry, OLESTR("Second X")},
    {21, kGeometry, OLESTR("Second Y")},
    {31, kGeometry, OLESTR("Second Z")},
    {38, kGeometry, OLESTR("Elevation")},
    {39, kGeometry, OLESTR("Thickness")},
    {40, kGeometry, OLESTR("Size")},
    {48, kGeneral, OLESTR("Line type scale")},
    {50, kGeometry, OLESTR("Angle")},
    {51, kGeometry, OLESTR("Second angle")},
    {60, kGeneral, OLESTR("Hidden")},
    {62, kGeneral, OLESTR("Colour number")},
    {67, kGeneral, OLESTR("In paper space")},
    {210, kGeometry, OLESTR("Extrusion X")},
    {220, kGeometry, OLESTR("Extrusion Y")},
    {230, kGeometry, OLESTR("Extrusion Z")},
    {370, kGeneral, OLESTR("Line weight")},
    {420, kGeneral, OLESTR("True colour")},
    {440, kGeneral, OLESTR("Transparency")},
};

struct Presentation {
  WideString name;
  SheetGroup group;
};

Presentation PresentationOf(LONG code) {
  const auto* const named = std::ranges::find(kNames, code, &CodeName::code);
  if (named != std::end(kNames)) return {named->name, named->group};
  const bool isPlane = (code >= 10 && code < 60) || (code >= 110 && code < 150);
  const GroupType type = TypeOf(code);
  const OLECHAR* name = type == GroupType::kReal   ? OLESTR("Number ")
                        : type == GroupType::kFlag ? OLESTR("Flag ")
                        : type == GroupType::kText ? OLESTR("Text ")
                                                   : OLESTR("Integer ");
  const std::string digits = std::to_string(code);
  const SheetGroup group = isPlane ? kGeometry : type == GroupType::kText ? kText : kOther;
  return {name + WideString(digits.begin(), digits.end()), group};
}

ULONG PropertyTypeOf(LONG code) {
  switch (TypeOf(code)) {
    case GroupType::kReal:
      return kPropertyDouble;
    case GroupType::kInteger:
      return kPropertyLong;
    case GroupType::kFlag:
      return kPropertyYesNo;
    default:
      return kPropertyString;
  }
}

}  // namespace

GUID KeyOfCode(LONG code) {
  GUID key = kFamily;
  key.Data1 = static_cast<ULONG>(code) + 1;  // a code of 0 has a key too
  return key;
}

std::optional<LONG> CodeOfKey(const GUID& key) {
  const auto code = static_cast<LONG>(key.Data1 - 1);
  return key == KeyOfCode(code) ? std::optional(code) : std::nullopt;
}

GUID KeyOfTag(const WideString& tag) { return KeyOfApplication(OLESTR("attribute ") + tag); }

IZDefinitionMgr& GroupDefinitions::Manager() {
  if (manager_ != nullptr) return *manager_;
  for (LONGLONG pos = document_.GetValidHeadPosition(); pos != 0 && manager_ == nullptr;) {
    manager_ = ViewAs<IZDefinitionMgr>(document_.GetValidNext(pos));
  }
  if (manager_ == nullptr) {
    const auto made = MakeObject<IZDefinitionMgr, CZDefinitionMgr>();
    document_.AttachTail(static_cast<IZDMObject*>(made.Get()));
    document_.GetOIDManager()->AssignItemID(made.Get(), true, true);
    manager_ = made;
  }
  const ZDefinitionNames* present = manager_->GetNameTable();
  for (LONG index = 0; index < static_cast<LONG>(kGroupNames.size()); ++index) {
    if (!present->contains(index)) {
      manager_->RegisterName(index, kGroupNames[static_cast<std::size_t>(index)]);
    }
  }
  return *manager_;
}

IZDMObject* GroupDefinitions::Query(const GUID& key, const WideString& name, ULONG type,
                                    LONG index) {
  IZDefinition* present = Manager().FindDefinition(&key);
  if (present != nullptr) return ViewAs<IZDMObject>(present);
  const auto property = MakeObject<IZProperty, CZProperty>();
  property->SetGUID(key);
  property->SetName(name.c_str());
  property->SetDisplayName(name.c_str());
  property->SetType(type);
  const auto definition = MakeObject<IZDefinition, CZDefinition>();
  definition->SetProperty(property, true);
  definition->SetIndex(index);
  Manager().AddDefinition(definition);
  return ViewAs<IZDMObject>(definition.Get());
}

IZDMObject* GroupDefinitions::ForCode(LONG code) {
  IZDMObject*& definition = byCode_[code];
  if (definition == nullptr) {
    const Presentation presentation = PresentationOf(code);
    definition =
        Query(KeyOfCode(code), presentation.name, PropertyTypeOf(code), presentation.group);
  }
  return definition;
}

IZDMObject* GroupDefinitions::ForTag(const WideString& tag) {
  IZDMObject*& definition = byTag_[NameKey(tag)];
  if (definition == nullptr) definition = Query(KeyOfTag(tag), tag, kPropertyString, kAttributes);
  return definition;
}

}  // namespace zdm
