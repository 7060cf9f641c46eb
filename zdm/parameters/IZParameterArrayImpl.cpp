// What an array holds, how that changes, and how it is stored.
#include "zdm/parameters/IZParameterArrayImpl.h"

#include "platform/core/IZStream.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/BulkAdd.h"
#include "zdm/parameters/ParameterSource.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr BYTE kBulkAddOpen = 0x01;  // in the flags

ZRefPtr<IZParameter> CopyOf(IZParameter* source) {
  auto copy = zdm::NewOf<IZParameter, CZParameter>();
  copy->CopyFrom(source);
  return copy;
}

ZParaArray Sorted(std::span<zdm::ParaEntry> entries) {
  zdm::SortByDefinition(entries);
  ZParaArray sorted;
  sorted.Assign(entries);
  return sorted;
}

GUID DefinitionOf(IZParameter* parameter) {
  GUID guid;
  return *parameter->GetDefinitionGUID(&guid);
}

}  // namespace

IZParameterArrayImpl::~IZParameterArrayImpl() {
  DropBulkAdd();
  IZParameterArrayImpl::RemoveAll();
}

// Adding.

/// In place of what was held, which goes when the array is whole again: it may run any code as it
/// does.
void IZParameterArrayImpl::Hold(ZParaArray parameters) {
  std::swap(storage_, parameters);
  for (LONG i = 0; i < parameters.GetCount(); ++i) Disown(parameters.at(i));
  storage_.SetOwner(this);
}

void IZParameterArrayImpl::BeginAdd() {
  flags_ |= kBulkAddOpen;
  if (bulkAdd_ != nullptr) return;
  auto& entries = zdm::BulkAdd::Take(&bulkAdd_)->entries;
  for (LONG i = 0; i < storage_.GetCount(); ++i) entries.push_back({{}, storage_.at(i)});
  zdm::SortByDefinition(entries);
  const auto isSame = [](const zdm::ParaEntry& a, const zdm::ParaEntry& b) {
    return a.key == b.key;
  };
  entries.erase(std::unique(entries.begin(), entries.end(), isSame), entries.end());
}

void IZParameterArrayImpl::Add(IZParameter* parameter, LONG) {
  if (parameter == nullptr || bulkAdd_ == nullptr || (flags_ & kBulkAddOpen) == 0) return;
  bulkAdd_->entries.push_back({{}, parameter});
  parameter->SetOwner(this);
}

void IZParameterArrayImpl::EndAdd() {
  flags_ &= static_cast<BYTE>(~kBulkAddOpen);
  if (bulkAdd_ == nullptr) return;
  ZParaArray merged = Sorted(bulkAdd_->entries);
  bulkAdd_->entries.clear();
  bulkAdd_->GiveBack();
  Hold(std::move(merged));
}

void IZParameterArrayImpl::DropBulkAdd() {
  flags_ &= static_cast<BYTE>(~kBulkAddOpen);
  if (bulkAdd_ == nullptr) return;
  for (const zdm::ParaEntry& entry : bulkAdd_->entries) Disown(entry.parameter);
  bulkAdd_->GiveBack();
}

void IZParameterArrayImpl::AddMissingFrom(IZParameterArray* other) {
  if (other == nullptr || other == this) return;
  std::vector<zdm::ParaEntry> copies;
  for (LONG i = 0; i < other->GetCount(); ++i) {
    IZParameter* const parameter = other->GetAt(i);
    if (GetParameter(DefinitionOf(parameter)) == nullptr) copies.push_back({{}, CopyOf(parameter)});
  }
  BeginAdd();
  for (const zdm::ParaEntry& copy : copies) Add(copy.parameter, 0);
  EndAdd();
}

void IZParameterArrayImpl::ReplaceFrom(IZParameterArray* other, bool keepOwnValues, LONG) {
  if (other == nullptr || other == this) return;
  std::vector<zdm::ParaEntry> copies;
  for (LONG i = 0; i < other->GetCount(); ++i) {
    IZParameter* const parameter = other->GetAt(i);
    IZParameter* const own = keepOwnValues ? GetParameter(DefinitionOf(parameter)) : nullptr;
    copies.push_back({{}, CopyOf(own != nullptr ? own : parameter)});
  }
  DropBulkAdd();
  Hold(Sorted(copies));
}

void IZParameterArrayImpl::Clone(IZParameterArray** out) {
  if (out == nullptr) return;
  *out = nullptr;
  auto clone = zdm::NewOf<IZParameterArray, CZParameterArray>();
  clone->GetParaArray()->AssignCopies(storage_, CopyOf);
  clone->GetParaArray()->SetOwner(clone);
  *out = clone.Detach();
}

void IZParameterArrayImpl::CreateParameter(IZParameter** out) {
  *out = nullptr;
  *out = zdm::NewOf<IZParameter, CZParameter>().Detach();
}

// Removing.

void IZParameterArrayImpl::Disown(IZParameter* parameter) {
  if (parameter->GetOwner() == this) parameter->SetOwner(nullptr);
}

bool IZParameterArrayImpl::RemoveAt(LONG index) {
  if (GetAt(index) == nullptr) return false;
  const ZRefPtr<IZParameter> removed = storage_.Take(index);
  if (storage_.IndexOf(removed.Get()) < 0) Disown(removed);
  return true;
}

bool IZParameterArrayImpl::RemoveByGUID(const GUID& definitionGUID) {
  return RemoveAt(storage_.IndexOf(definitionGUID));
}

bool IZParameterArrayImpl::Remove(IZParameter* parameter) {
  return RemoveAt(storage_.IndexOf(parameter));
}

// Looking up.

IZParameter* IZParameterArrayImpl::GetAt(LONG index) {
  return index >= 0 && index < storage_.GetCount() ? storage_.at(index) : nullptr;
}

IZParameter* IZParameterArrayImpl::GetParameter(const GUID& definitionGUID) {
  return storage_.GetParameter(definitionGUID);
}

bool IZParameterArrayImpl::IsEqualTo(IZParameterArray* other) {
  for (LONG i = 0; i < storage_.GetCount(); ++i) {
    IZParameter* const own = storage_.at(i);
    IZParameter* const theirs = other != nullptr ? other->GetParameter(DefinitionOf(own)) : nullptr;
    if (theirs == nullptr || !theirs->IsEqual(own)) return false;
  }
  return true;
}

// A change is reported, which may run any code, so both sides are held.
void IZParameterArrayImpl::UpdateFrom(IZObject* source, std::list<GUID>* changed) {
  const ZRefPtr<IZParameterArray> held = this;
  zdm::ForEachParameter(source, [&](IZParameter* theirs) {
    const GUID guid = DefinitionOf(theirs);
    const ZRefPtr<IZParameter> own = GetParameter(guid);
    if (own == nullptr) return;
    if (changed != nullptr && !own->IsEqual(theirs)) changed->push_back(guid);
    own->SetValue(theirs->GetValue());
  });
}

// Owner and references.

void IZParameterArrayImpl::SetOwner(IZDMObject* object) {
  const bool holdsThis = object != nullptr && object->PeekParameterArray() == this;
  owner_ = holdsThis ? object : nullptr;
  looseOwner_ = zdm::WeakView<IZDMObject>(holdsThis ? nullptr : object);
  storage_.SetOwner(this);
}

IZDMObject* IZParameterArrayImpl::GetOwner() {
  return owner_ != nullptr ? owner_ : looseOwner_.Get();
}

void IZParameterArrayImpl::OnParameterChanged(IZParameter*) {
  if (IZDMObject* object = GetOwner()) object->OnParametersChanged();
}

bool IZParameterArrayImpl::Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) {
  storage_.Watch();
  for (LONG i = 0; i < storage_.GetCount(); ++i) {
    const ZRefPtr<IZParameter> parameter = storage_.at(i);  // the visitor may take it away
    if (parameter->Accept(root, owner, visitor)) return true;
  }
  return false;
}

// Parameter array record, little-endian.
//   offset  size  field
//        0     1  flags; 0x01 while a bulk add is open, the other bits as they were loaded
//        1     ?  parameter storage record, see ZParaArray.cpp
void IZParameterArrayImpl::Save(IZStream* stream, IZDatabase* database) {
  stream->Write(&flags_, 1);
  storage_.Save(stream, database);
}

void IZParameterArrayImpl::Load(IZStream* stream, IZDatabase* database) {
  stream->Read(&flags_, 1);
  ZParaArray loaded;
  try {
    loaded.Load(stream, database);
  } catch (...) {
    Hold(std::move(loaded));
    throw;
  }
  Hold(std::move(loaded));
}
