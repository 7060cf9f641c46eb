#include "zdm/categories/ZCategoryReltnMap.h"

#include "platform/core/IZStream.h"
#include "zdm/categories/CategoryTree.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/categories/IZCategoryReltn.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/module/ClassTable.h"

#include <vector>

ZCategoryReltnMap::~ZCategoryReltnMap() = default;

void ZCategoryReltnMap::ClearIndexes() {
  byCategory_.clear();
  byNumber_.clear();
}

void ZCategoryReltnMap::Initialize() {
  ClearIndexes();
  categoryColl_.Reset();
}

void ZCategoryReltnMap::SetCategoryColl(IZReltnColl* coll) {
  categoryColl_ = coll;
  RebuildCategoryMap();
}

void ZCategoryReltnMap::AddRelation(IZCategory* category) {
  const ZRefPtr<IZCategoryReltn> relation =
      category != nullptr ? category->CreateCategoryReltn() : nullptr;
  if (relation == nullptr) return;
  if (categoryColl_ == nullptr) categoryColl_ = zdm::NewOf<IZReltnColl, CZReltnColl>();
  categoryColl_->AddTail(relation.Get());
  const zdm::WeakView<IZRelation> view(relation);
  byCategory_[category] = {zdm::WeakView(category), view};
  byNumber_[static_cast<LONG>(category->GetNumber())] = view;
}

// Rebuilding.

void ZCategoryReltnMap::RebuildCategoryMap() {
  ClearIndexes();
  if (categoryColl_ != nullptr) RebuildCategoryMap(categoryColl_);
}

void ZCategoryReltnMap::RebuildCategoryMap(IZReltnColl* coll) {
  if (coll != nullptr) Rebuild(coll, true);
}

/// The first one under a key stays while it lives.
void ZCategoryReltnMap::Index(IZCategory* category, IZRelation* relation) {
  const zdm::WeakView<IZRelation> view(relation);
  CategoryEntry& entry = byCategory_[category];
  if (entry.category.Get() == nullptr || entry.relation.Get() == nullptr) {
    entry = {zdm::WeakView(category), view};
  }
  zdm::WeakView<IZRelation>& numbered = byNumber_[static_cast<LONG>(category->GetNumber())];
  if (numbered.Get() == nullptr) numbered = view;
}

/// A root has everything below it check itself.
void ZCategoryReltnMap::Rebuild(IZReltnColl* coll, bool isOfRoots) {
  std::vector<ZRefPtr<IZRelation>> retained;
  LONGLONG next = 0;
  for (LONGLONG pos = coll->GetHeadPosition(); pos != 0; pos = next) {
    next = pos;
    const ZRefPtr<IZCategoryReltn> relation = zdm::ViewAs<IZCategoryReltn>(coll->GetNext(next));
    if (relation == nullptr) continue;
    if (isOfRoots) relation->AssertValid(nullptr);
    IZCategory* category = relation->GetCategory();
    if (category == nullptr) continue;
    const ZRefPtr<IZReltnColl> below = relation->GetSubReltns();
    const zdm::TreeStep<ZCategoryReltnMap> step(relation, below);
    if (!step.IsTaken()) continue;
    retained.emplace_back(relation.Get());
    Index(category, relation);
    if (below != nullptr) Rebuild(below, false);
  }
  if (retained.size() == static_cast<std::size_t>(coll->GetCount())) return;
  coll->RemoveAll();
  for (const auto& relation : retained) coll->AddTail(relation.Get());
}

// Asking.

IZRelation* ZCategoryReltnMap::GetCategoryReltn(LONG number) const {
  const auto found = byNumber_.find(number);
  return found != byNumber_.end() ? found->second.Get() : nullptr;
}

IZRelation* ZCategoryReltnMap::GetCategoryReltn(IZCategory* category) const {
  const auto found = byCategory_.find(category);
  if (found == byCategory_.end() || found->second.category.Get() == nullptr) return nullptr;
  return found->second.relation.Get();
}

bool ZCategoryReltnMap::GetCategoryVisible(LONG number) const {
  IZRelation* relation = number != 0 ? GetCategoryReltn(number) : nullptr;
  return relation == nullptr || relation->IsVisible(zdm::kCategoryDraw, nullptr);
}

IZDispAttrib* ZCategoryReltnMap::FindProjectionDispAttrib(LONG number) const {
  IZDispAttrib* found = nullptr;
  zdm::AnyElement<IZCategoryReltn>(categoryColl_, [&](IZCategoryReltn& element) {
    found = element.FindProjectionDispAttrib(number);
    return found != nullptr;
  });
  return found;
}

IZDispAttrib* ZCategoryReltnMap::FindSectionDispAttrib(LONG number) const {
  IZDispAttrib* found = nullptr;
  zdm::AnyElement<IZCategoryReltn>(categoryColl_, [&](IZCategoryReltn& element) {
    found = element.FindSectionDispAttrib(number);
    return found != nullptr;
  });
  return found;
}

void ZCategoryReltnMap::RefreshCategoryDispAttribToSysCategorizing() {
  for (const auto& [key, entry] : byCategory_) {
    IZRelation* held = entry.category.Get() != nullptr ? entry.relation.Get() : nullptr;
    if (auto* relation = zdm::ViewAs<IZCategoryReltn>(held)) relation->ApplyToCategory();
  }
}

// Map record.
//   size      field
//      1      1 when a collection follows, else 0
//   variable  relation collection record
void ZCategoryReltnMap::Save(IZStream* stream, IZDatabase* database) const {
  stream->WriteFlag(categoryColl_ != nullptr);
  if (categoryColl_ != nullptr) categoryColl_->Save(stream, database);
}

void ZCategoryReltnMap::Load(IZStream* stream, IZDatabase* database) {
  ClearIndexes();
  if (!stream->ReadFlag()) return;
  if (categoryColl_ != nullptr) {
    categoryColl_->RemoveAll();
  } else {
    categoryColl_ = zdm::NewOf<IZReltnColl, CZReltnColl>();
  }
  categoryColl_->Load(stream, database);
}

void ZCategoryReltnMap::CopyFrom(const ZCategoryReltnMap& other) {
  if (&other == this) return;
  Initialize();
  if (other.categoryColl_ != nullptr) other.categoryColl_->Clone(categoryColl_.Out(), true);
}
