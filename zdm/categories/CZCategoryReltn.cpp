#include "zdm/categories/CZCategoryReltn.h"

#include "platform/core/IZStream.h"
#include "zdm/categories/CategoryTree.h"
#include "zdm/categories/IZCategorizing.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/host/HostClasses.h"
#include "zdm/identity/OID.h"
#include "zdm/relations/IZReltnVisitor.h"

ZDM_OBJECT_BODY(CZCategoryReltn)

namespace {

ZRefPtr<IZDispAttrib> NewAttrib() { return zdm::CreateAs<IZDispAttrib>(zdm::kDispAttribClass); }

void CopyInto(ZRefPtr<IZDispAttrib>& attribute, IZDispAttrib* source) {
  if (attribute == nullptr) attribute = NewAttrib();
  if (attribute != nullptr) attribute->CopyFrom(source);
}

bool AreSame(IZDispAttrib* left, IZDispAttrib* right) {
  return left != nullptr ? left->JudgeSame(right) : right == nullptr;
}

/// Whether `wanted` is `tree` or stands below it.
bool IsIn(IZCategoryReltn& tree, const IZCategoryReltn* wanted) {
  struct Looking;
  if (&tree == wanted) return true;
  IZReltnColl* below = tree.GetSubReltns();
  const zdm::TreeStep<Looking> step(&tree, below);
  return step.IsTaken() && zdm::AnyElement<IZCategoryReltn>(below, [&](IZCategoryReltn& element) {
           return IsIn(element, wanted);
         });
}

/// The record holds both attributes, whatever happens.
void Require(ZRefPtr<IZDispAttrib>& attribute) {
  if (attribute == nullptr) attribute = NewAttrib();
  if (attribute == nullptr) throw CAtlException(E_FAIL);
}

}  // namespace

CZCategoryReltn::CZCategoryReltn() : projectionAttrib_(NewAttrib()), sectionAttrib_(NewAttrib()) {
  status_ = ZRS_VALID | ZRS_DIFFUSIBLE;
}

/// As zdm::AnyElement over the sub-relations, unless the tree is too deep here.
template <class Test>
bool CZCategoryReltn::AnySubReltn(Test test) {
  const zdm::TreeStep<CZCategoryReltn> step(this, subReltns_);
  return step.IsTaken() && zdm::AnyElement<IZCategoryReltn>(subReltns_, test);
}

// Target.

IZCategory* CZCategoryReltn::GetCategory() {
  return target_ != nullptr ? zdm::ViewAs<IZCategory>(target_->Object) : nullptr;
}

ULONG CZCategoryReltn::GetCategoryNumber() {
  IZCategory* category = GetCategory();
  return category != nullptr ? category->GetNumber() : 0;
}

void CZCategoryReltn::GetCategoryName(BSTR* out) {
  *out = nullptr;
  if (IZCategory* category = GetCategory()) return category->GetName(out);
  zdm::Bstr(OLESTR("")).CopyTo(out);
}

void CZCategoryReltn::SetReltnObj(IZObject* object) {
  auto* view = zdm::ViewAs<IZDMObject>(object);
  if (view != nullptr && target_ != nullptr && target_->Object == view) return;
  PointAt(view != nullptr ? view->GetOID() : nullptr);
  auto* category = zdm::ViewAs<IZCategory>(view);
  if (category == nullptr) return;
  SetFlag(kFlag04, category->IsFlag0200());
  SetFlag(kFlag08, category->IsFlag0080());
  SetFlag(kVisible, category->IsCategoryVisible());
  level_ = category->GetLevel();
}

void CZCategoryReltn::ApplyToCategory() {
  auto* object = target_ != nullptr ? zdm::ViewAs<IZCategorizing>(target_->Object) : nullptr;
  if (object != nullptr) object->SetCategoryReltn(this);
}

// Values.

void CZCategoryReltn::SetProjectionDispAttrib(IZDispAttrib* source) {
  CopyInto(projectionAttrib_, source);
}

void CZCategoryReltn::SetSectionDispAttrib(IZDispAttrib* source) {
  CopyInto(sectionAttrib_, source);
}

void CZCategoryReltn::SetHatchA(const ZGiHatchData* source) {
  if (source != nullptr) hatchA_ = *source;
}

void CZCategoryReltn::SetHatchB(const ZGiHatchData* source) {
  if (source != nullptr) hatchB_ = *source;
}

bool CZCategoryReltn::JudgeSameValues(IZCategoryReltn* other) {
  return other != nullptr && other->IsVisible(zdm::kCategoryDraw, nullptr) == JudgeFlag(kVisible) &&
         other->IsFlag02() == JudgeFlag(kFlag02) && other->IsFlag08() == JudgeFlag(kFlag08) &&
         other->IsFlag04() == JudgeFlag(kFlag04) && other->GetReltnObject() == GetReltnObject() &&
         hatchA_.JudgeSame(*other->GetHatchA()) && hatchB_.JudgeSame(*other->GetHatchB()) &&
         AreSame(projectionAttrib_, other->GetProjectionDispAttrib()) &&
         AreSame(sectionAttrib_, other->GetSectionDispAttrib()) && other->GetLevel() == level_;
}

// Copying.

void CZCategoryReltn::CopyFrom(IZRelation* other) { CopyAll(other, true); }
void CZCategoryReltn::CopyValuesFrom(IZCategoryReltn* other) { CopyAll(other, false); }

void CZCategoryReltn::CopyAll(IZRelation* other, bool withSubReltns) {
  if (other == nullptr) return SetReltnObj(nullptr);
  if (static_cast<CZObject*>(other) == static_cast<CZObject*>(this)) return;
  IZRelationImpl::CopyFrom(other);  // NOLINT(bugprone-parent-virtual-call): the target comes next
  CopyTarget(zdm::ViewAs<IZSingleReltn>(other));
  auto* source = zdm::ViewAs<IZCategoryReltn>(other);
  if (source == nullptr) return;
  SetFlag(kVisible, source->IsVisible(zdm::kCategoryDraw, nullptr));
  SetFlag(kFlag02, source->IsFlag02());
  SetFlag(kFlag08, source->IsFlag08());
  SetFlag(kFlag04, source->IsFlag04());
  SetProjectionDispAttrib(source->GetProjectionDispAttrib());
  SetSectionDispAttrib(source->GetSectionDispAttrib());
  const zdm::TreeStep<CZCategoryReltn> step(this, source->GetSubReltns());
  if (withSubReltns && step.IsTaken()) {
    zdm::AnyElement<IZCategoryReltn>(source->GetSubReltns(), [this](IZCategoryReltn& element) {
      AppendSubReltn(zdm::CloneAs<IZCategoryReltn>(&element));
      return false;
    });
  }
  SetHatchA(source->GetHatchA());
  SetHatchB(source->GetHatchB());
  SetLevel(source->GetLevel());
}

/// A record that has no object at the moment is taken too, so that the reference is not lost.
void CZCategoryReltn::CopyTarget(IZSingleReltn* other) {
  IZDMObject* object = other != nullptr ? other->GetReltnObject() : nullptr;
  SetReltnObj(object);
  if (object == nullptr && other != nullptr) PointAt(other->GetReltnOID());
}

// Sub-relations.

void CZCategoryReltn::AddSubReltn(IZObject* relation) {
  auto* added = zdm::ViewAs<IZCategoryReltn>(relation);
  if (added == nullptr || !IsIn(*added, this)) AppendSubReltn(relation);
}

void CZCategoryReltn::AppendSubReltn(IZObject* relation) {
  if (relation == nullptr) return;
  if (subReltns_ == nullptr) subReltns_ = zdm::NewOf<IZReltnColl, CZReltnColl>();
  subReltns_->AddTail(relation);
  zdm::ChangeWatch::Changed(*this);
}

void CZCategoryReltn::CollectReltns(IZReltnColl* coll) {
  if (coll == nullptr || coll == subReltns_.Get()) return;
  const zdm::TreeStep<CZCategoryReltn> step(this, subReltns_);
  if (!step.IsTaken()) return;
  coll->AddTail(this);
  zdm::AnyElement<IZCategoryReltn>(subReltns_, [coll](IZCategoryReltn& element) {
    element.CollectReltns(coll);
    return false;
  });
}

void CZCategoryReltn::AssertValid(IZDatabase*) {
  if (projectionAttrib_ != nullptr) projectionAttrib_->AssertValid(nullptr);
  if (sectionAttrib_ != nullptr) sectionAttrib_->AssertValid(nullptr);
  const zdm::TreeStep<CZCategoryReltn> step(this, subReltns_);
  if (!step.IsTaken()) return;
  zdm::AnyElement<IZRelation>(subReltns_, [](IZRelation& element) {
    element.AssertValid(nullptr);
    return false;
  });
}

bool CZCategoryReltn::Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) {
  if (OfferTarget(root, owner, nullptr, visitor)) return true;
  for (IZRelation* attribute : {projectionAttrib_.Get(), sectionAttrib_.Get()}) {
    if (attribute != nullptr && visitor->Visit(root, owner, attribute)) return true;
  }
  return subReltns_ != nullptr && subReltns_->Accept(root, owner, visitor);
}

// Searches.

bool CZCategoryReltn::HasNumber(LONG number) {
  IZCategory* category = GetCategory();
  return category != nullptr && category->GetNumber() == static_cast<ULONG>(number);
}

IZDispAttrib* CZCategoryReltn::FindProjectionDispAttrib(LONG number) {
  if (HasNumber(number)) return GetProjectionDispAttrib();
  IZDispAttrib* found = nullptr;
  AnySubReltn([&](IZCategoryReltn& element) {
    found = element.FindProjectionDispAttrib(number);
    return found != nullptr;
  });
  return found;
}

IZDispAttrib* CZCategoryReltn::FindSectionDispAttrib(LONG number) {
  if (HasNumber(number)) return GetSectionDispAttrib();
  IZDispAttrib* found = nullptr;
  AnySubReltn([&](IZCategoryReltn& element) {
    found = element.FindSectionDispAttrib(number);
    return found != nullptr;
  });
  return found;
}

bool CZCategoryReltn::FindCategoryVisible(LONG number, bool* found) {
  *found = HasNumber(number);
  if (*found) return JudgeFlag(kVisible);
  bool visible = true;
  AnySubReltn([&](IZCategoryReltn& element) {
    visible = element.FindCategoryVisible(number, found);
    return *found;
  });
  return visible;
}

IZCategoryReltn* CZCategoryReltn::FindCategoryReltn(LONG number) {
  if (HasNumber(number)) return this;
  IZCategoryReltn* found = nullptr;
  AnySubReltn([&](IZCategoryReltn& element) {
    found = element.FindCategoryReltn(number);
    return found != nullptr;
  });
  return found;
}

// Category relation record, little-endian.
//   size      field
//     16      single-target relation record (IZSingleReltnImpl)
//      1      flags: 0x01 visible, 0x02, 0x04, 0x08
//      1      level
//   variable  projection attribute's record
//   variable  section attribute's record
//   variable  hatch A (ZGiHatchData)
//   variable  hatch B
//      1      1 when sub-relations follow, else 0
//   variable  relation collection record
void CZCategoryReltn::Save(IZStream* stream, IZDatabase* database) {
  Require(projectionAttrib_);
  Require(sectionAttrib_);
  IZSingleReltnImpl::Save(stream, database);
  const BYTE flagsAndLevel[2] = {flags_, level_};
  stream->Write(flagsAndLevel, sizeof(flagsAndLevel));
  projectionAttrib_->Save(stream, database);
  sectionAttrib_->Save(stream, database);
  hatchA_.Save(stream);
  hatchB_.Save(stream);
  stream->WriteFlag(subReltns_ != nullptr);
  if (subReltns_ != nullptr) subReltns_->Save(stream, database);
}

// Sub-relations come in a collection, which counts how deeply records are nested.
void CZCategoryReltn::Load(IZStream* stream, IZDatabase* database) {
  Require(projectionAttrib_);
  Require(sectionAttrib_);
  IZSingleReltnImpl::Load(stream, database);
  stream->Read(&flags_, sizeof(flags_));
  stream->Read(&level_, sizeof(level_));
  projectionAttrib_->Load(stream, database);
  sectionAttrib_->Load(stream, database);
  hatchA_.Load(stream);
  hatchB_.Load(stream);
  if (!stream->ReadFlag()) return;
  if (subReltns_ != nullptr) {
    subReltns_->RemoveAll();
  } else {
    subReltns_ = zdm::NewOf<IZReltnColl, CZReltnColl>();
  }
  subReltns_->Load(stream, database);
  zdm::ChangeWatch::Changed(*this);
}
