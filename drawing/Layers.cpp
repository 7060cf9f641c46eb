#include "drawing/Layers.h"

#include "document/CZDispAttrib.h"
#include "document/CZDocument.h"
#include "drawing/Colours.h"
#include "drawing/DrawingObject.h"
#include "drawing/GroupCodes.h"
#include "drawing/GroupReader.h"
#include "drawing/Numbers.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/categories/IZCategoryMgr.h"
#include "zdm/host/eZGiDraw.h"

namespace zdm {

namespace {

constexpr LONG kColourCode = 62;
constexpr LONG kTrueColourCode = 420;
constexpr LONG kLineTypeCode = 6;
constexpr LONG kLineTypeScaleCode = 48;
constexpr LONG kInvisibleCode = 60;
constexpr LONG kFlagsCode = 70;
constexpr LONG kWeightCode = 370;
constexpr LONG kFrozen = 1;

WideString NameOfCategory(IZCategory& category) {
  Bstr name;
  static_cast<IZDMObject&>(category).GetName(name.Out());
  return WideString(name.View());
}

std::optional<LONG> IntegerAt(const GroupList& groups, LONG code) {
  return ParseLong(groups.Find(code));
}

bool IsShown(const GroupList& layer) {
  return IntegerAt(layer, kColourCode).value_or(kForeground) >= 0 &&
         (IntegerAt(layer, kFlagsCode).value_or(0) & kFrozen) == 0;
}

/// What a layer or an entity says itself; what it leaves to its layer stays.
void TakeValues(const GroupList& groups, const TextCodec& codec, DispValues* values) {
  const LONG colour = IntegerAt(groups, kColourCode).value_or(kByLayer);
  if (const LONG number = colour < 0 ? -colour : colour; number > 0 && number < kByLayer) {
    values->color = RgbOf(number);
  }
  if (const auto rgb = IntegerAt(groups, kTrueColourCode)) {
    values->color = static_cast<ULONG>(*rgb) & 0xFFFFFF;
  }
  const WideString lineType = codec.Show(Trimmed(groups.Find(kLineTypeCode)));
  const WideString key = NameKey(lineType);
  if (!key.empty() && key != OLESTR("bylayer") && key != OLESTR("byblock")) {
    values->lineType = Bstr(WideView(lineType));
  }
  if (const auto scale = ParseReal(groups.Find(kLineTypeScaleCode))) values->lineTypeScale = *scale;
  if (const LONG weight = IntegerAt(groups, kWeightCode).value_or(-1); weight >= 0) {
    values->lineWeight = weight;
  }
}

DispValues LayerValues(const GroupList& groups, const TextCodec& codec) {
  DispValues values;
  TakeValues(groups, codec, &values);
  values.isVisible = IsShown(groups);
  return values;
}

CZDispAttrib* AttribOf(IZCategory& category) {
  return dynamic_cast<CZDispAttrib*>(category.GetProjectionDispAttrib());
}

void SetValues(IZCategory& category, const DispValues& values) {
  const auto attribute = MakeObject<CZDispAttrib, CZDispAttrib>();
  attribute->SetValues(values);
  category.SetProjectionDispAttrib(attribute);
  category.SetSectionDispAttrib(attribute);
  category.SetCategoryVisible(values.isVisible);
}

void Edit(const GroupList& groups, LONG code, std::string text, GroupEdits* edits) {
  const ULONG index = groups.IndexOf(code);
  if (index < groups.Count()) (*edits)[index] = std::move(text);
}

}  // namespace

Layers::Layers(CZDocument& document) : document_(document), manager_(document.GetCategoryMgr()) {
  if (manager_ == nullptr) {
    document_.MakeDefaults();
    manager_ = document_.GetCategoryMgr();
  }
  for (LONGLONG pos = manager_->GetValidHeadPosition(); pos != 0;) {
    auto* category = ViewAs<IZCategory>(manager_->GetValidNext(pos));
    if (category != nullptr) byName_.emplace(NameKey(NameOfCategory(*category)), category);
  }
}

IZCategory* Layers::Find(const WideString& name) const {
  const auto found = byName_.find(NameKey(name));
  return found != byName_.end() ? found->second : nullptr;
}

IZCategory* Layers::Query(const WideString& name) {
  if (IZCategory* present = Find(name)) return present;
  while (manager_->GetCategoryByNumber(nextNumber_) != nullptr) ++nextNumber_;
  const auto category =
      Attached(manager_->GetOrCreateCategory(static_cast<ULONG>(nextNumber_), name.c_str()));
  if (category == nullptr) throw CAtlException(E_FAIL);
  byName_.emplace(NameKey(name), category);
  return category;
}

void Layers::AddRecord(IZDMObject& record, const TextCodec& codec) {
  const GroupList& groups = PartOf(&record)->Groups();
  const WideString name = codec.Show(groups.Find(kNameCode));
  const bool isNew = Find(name) == nullptr;
  IZCategory* layer = Query(name);
  if (isNew) SetValues(*layer, LayerValues(groups, codec));
  const ZRefPtr<IZCategoryReltn> relation = layer->CreateCategoryReltn();
  record.AddRelation(relation);
}

void Layers::Assign(IZDMObject& entity, IZCategory& layer, const TextCodec& codec) const {
  const GroupList& groups = PartOf(&entity)->Groups();
  const ZRefPtr<IZCategoryReltn> relation = layer.CreateCategoryReltn();
  if (relation == nullptr) throw CAtlException(E_FAIL);
  if (auto* attribute = dynamic_cast<CZDispAttrib*>(relation->GetProjectionDispAttrib())) {
    DispValues values = attribute->GetValues();
    TakeValues(groups, codec, &values);
    if (IntegerAt(groups, kInvisibleCode).value_or(0) != 0) {
      values.isVisible = false;
      relation->SetVisibility(kCategoryDraw, false, nullptr);
    }
    attribute->SetValues(values);
  }
  entity.AddRelation(relation);
}

WideString LayerNameOf(IZDMObject& object) {
  IZCategoryReltn* relation = GetCategoryReltn(object);
  IZCategory* category = relation != nullptr ? relation->GetCategory() : nullptr;
  return category != nullptr ? NameOfCategory(*category) : WideString();
}

void CollectLayerEdits(IZDMObject& record, const DrawingPart& part, const TextCodec& codec,
                       GroupEdits* edits) {
  IZCategoryReltn* relation = GetCategoryReltn(record);
  IZCategory* category = relation != nullptr ? relation->GetCategory() : nullptr;
  if (category == nullptr) return;
  const GroupList& groups = part.Groups();
  const WideString name = NameOfCategory(*category);
  if (NameKey(name) != NameKey(codec.Show(groups.Find(kNameCode)))) {
    Edit(groups, kNameCode, codec.Write(name), edits);
  }
  CZDispAttrib* attribute = AttribOf(*category);
  if (attribute == nullptr) return;
  const DispValues written = LayerValues(groups, codec);
  const DispValues shown = attribute->GetValues();
  const bool isVisible = category->IsCategoryVisible();
  const LONG colour = IntegerAt(groups, kColourCode).value_or(kForeground);
  const LONG number = shown.color == written.color ? std::abs(colour) : NumberOfColour(shown.color);
  if (shown.color != written.color || isVisible != written.isVisible) {
    Edit(groups, kColourCode, std::to_string(isVisible ? number : -number), edits);
  }
  const LONG flags = IntegerAt(groups, kFlagsCode).value_or(0);
  if (isVisible && (flags & kFrozen) != 0) {
    Edit(groups, kFlagsCode, std::to_string(flags & ~kFrozen), edits);
  }
  if (!(shown.lineType == written.lineType)) {
    Edit(groups, kLineTypeCode, codec.Write(shown.lineType.View()), edits);
  }
}

}  // namespace zdm
