#include "zdm/parameters/ZParaArray.h"

#include "platform/core/IZStream.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/LoadDepth.h"
#include "zdm/module/ClassTable.h"
#include "zdm/properties/GUID_UNSET.h"

#include <algorithm>
#include <compare>
#include <new>
#include <utility>
#include <vector>

namespace {

constexpr ULONG kSmallestRecord = 7;  // flags 2, key 2, three bytes that say what follows

zdm::GuidKey KeyOf(IZParameter* parameter) {
  GUID guid;
  return zdm::GuidKey(*parameter->GetDefinitionGUID(&guid));
}

/// The place that a binary search for `wanted` among `count` keys comes to; -1 if it comes to none.
template <class KeyAt>
LONG Search(LONG count, const zdm::GuidKey& wanted, const KeyAt& keyAt) {
  LONG low = 0;
  LONG high = count - 1;
  while (low <= high) {
    const LONG middle = (low + high) / 2;
    const auto order = wanted <=> keyAt(middle);
    if (std::is_eq(order)) return middle;
    if (std::is_lt(order)) {
      high = middle - 1;
    } else {
      low = middle + 1;
    }
  }
  return -1;
}

/// The first place of `wanted`; -1 if none.
template <class Element, class Wanted>
LONG PlaceOf(Element* elements, LONG count, const Wanted& wanted) {
  Element* const found = std::find(elements, elements + count, wanted);
  return found != elements + count ? static_cast<LONG>(found - elements) : -1;
}

}  // namespace

void zdm::SortByDefinition(std::span<ParaEntry> entries) {
  for (ParaEntry& entry : entries) entry.key = KeyOf(entry.parameter);
  std::ranges::stable_sort(entries, {}, &ParaEntry::key);
}

ZParaArray::ZParaArray(const ZParaArray& other)
    : items_(Allocate(other.count_)), count_(other.count_) {
  std::copy_n(other.items_, count_, items_);
  std::copy_n(other.Keys(), count_, Keys());
  for (LONG i = 0; i < count_; ++i) items_[i]->AddRef();
}

ZParaArray::ZParaArray(ZParaArray&& other) noexcept
    : items_(std::exchange(other.items_, nullptr)), count_(std::exchange(other.count_, 0)) {
  zdm::ChangeWatch::Changed(other.watch_);
}

ZParaArray& ZParaArray::operator=(ZParaArray other) noexcept {
  std::swap(items_, other.items_);
  std::swap(count_, other.count_);
  zdm::ChangeWatch::Changed(watch_);
  return *this;
}

ZParaArray::~ZParaArray() {
  for (LONG i = 0; i < count_; ++i) items_[i]->Release();
  ::operator delete(items_);
}

IZParameter** ZParaArray::Allocate(LONG count) {
  if (count == 0) return nullptr;
  constexpr std::size_t kSize = sizeof(void*) + sizeof(zdm::GuidKey);
  return static_cast<IZParameter**>(::operator new(static_cast<std::size_t>(count) * kSize));
}

// What goes may run any code as it does, so it goes when the array is whole again.
void ZParaArray::RemoveAll() { const ZParaArray gone = std::move(*this); }

void ZParaArray::Assign(std::span<zdm::ParaEntry> entries) {
  ZParaArray assigned;
  assigned.items_ = Allocate(static_cast<LONG>(entries.size()));
  assigned.count_ = static_cast<LONG>(entries.size());
  for (LONG i = 0; zdm::ParaEntry & entry : entries) {
    assigned.Keys()[i] = entry.key;
    assigned.items_[i++] = entry.parameter.Detach();
  }
  *this = std::move(assigned);
}

// Copying may run any code, so `source` may become another one meanwhile.
void ZParaArray::AssignCopies(const ZParaArray& source,
                              ZRefPtr<IZParameter> (*copy)(IZParameter*)) {
  ZParaArray copies;
  const LONG room = source.count_;
  copies.items_ = Allocate(room);
  while (copies.count_ < std::min(room, source.count_)) {
    const ZRefPtr<IZParameter> copied(source.items_[copies.count_]);
    copies.items_[copies.count_] = copy(copied).Detach();
    ++copies.count_;
  }
  const LONG known = std::min(copies.count_, source.count_);
  std::fill(std::copy_n(source.Keys(), known, copies.Keys()), copies.Keys() + copies.count_,
            zdm::GuidKey());
  *this = std::move(copies);
}

ZRefPtr<IZParameter> ZParaArray::Take(LONG index) {
  ZParaArray rest;
  rest.items_ = Allocate(count_ - 1);
  rest.count_ = count_ - 1;
  for (LONG from = 0, to = 0; from < count_; ++from) {
    if (from == index) continue;
    rest.items_[to] = items_[from];
    rest.Keys()[to++] = Keys()[from];
  }
  std::swap(items_, rest.items_);
  std::swap(count_, rest.count_);
  zdm::ChangeWatch::Changed(watch_);
  auto taken = zdm::Attached(rest.items_[index]);
  rest.count_ = 0;  // the others moved
  return taken;
}

IZParameter* ZParaArray::GetParameter(const GUID& definitionGUID) const {
  const LONG index = IndexOf(definitionGUID);
  return index >= 0 ? items_[index] : nullptr;
}

LONG ZParaArray::IndexOf(const GUID& definitionGUID) const {
  if (definitionGUID == GUID_UNSET) return -1;
  const zdm::GuidKey wanted(definitionGUID);
  zdm::GuidKey* const keys = Keys();
  const auto remembered = [keys](LONG index) -> const zdm::GuidKey& { return keys[index]; };
  const LONG guess = Search(count_, wanted, remembered);
  if (guess >= 0 && KeyOf(items_[guess]) == wanted) return guess;
  LookAgain();
  const LONG found = Search(count_, wanted, remembered);
  return found >= 0 ? found : PlaceOf(keys, count_, wanted);
}

LONG ZParaArray::FirstOf(const GUID& definitionGUID) const {
  const zdm::GuidKey wanted(definitionGUID);
  const LONG guess = PlaceOf(Keys(), count_, wanted);
  if (guess >= 0 && KeyOf(items_[guess]) == wanted) return guess;
  LookAgain();
  return PlaceOf(Keys(), count_, wanted);
}

/// A definition has changed since, or has arrived only now.
void ZParaArray::LookAgain() const {
  for (LONG i = 0; i < count_; ++i) Keys()[i] = KeyOf(items_[i]);
}

LONG ZParaArray::IndexOf(const IZParameter* parameter) const {
  return PlaceOf(items_, count_, parameter);
}

bool ZParaArray::IsExist(const GUID& definitionGUID) const {
  if (definitionGUID == GUID_UNSET) return false;
  const auto asked = [this](LONG index) { return KeyOf(items_[index]); };
  return Search(count_, zdm::GuidKey(definitionGUID), asked) >= 0;
}

void ZParaArray::SetOwner(IZParameterArray* array) const {
  for (LONG i = 0; i < count_; ++i) items_[i]->SetOwner(array);
}

// Parameter storage record, little-endian.
//   offset  size  field
//        0     4  number of parameters, signed; below 1 for none
//   then for each parameter in its order
//        0     ?  the parameter's own record
void ZParaArray::Save(IZStream* stream, IZDatabase* database) {
  const ZParaArray saved = *this;  // as it is now: saving may run any code
  stream->WriteCount(saved.count_);
  for (LONG i = 0; i < saved.count_; ++i) saved.items_[i]->Save(stream, database);
}

void ZParaArray::Load(IZStream* stream, IZDatabase* database) {
  const zdm::LoadDepth nested;
  const LONG count = std::max(stream->ReadCount(), LONG{0});
  std::vector<zdm::ParaEntry> loaded;
  loaded.reserve(static_cast<std::size_t>(
      std::min(static_cast<ULONGLONG>(count), stream->GetBytesLeft() / kSmallestRecord)));
  try {
    for (LONG i = 0; i < count; ++i) {
      const auto parameter = zdm::NewOf<IZParameter, CZParameter>();
      parameter->Load(stream, database);
      loaded.push_back({{}, parameter});
    }
  } catch (...) {
    Assign(loaded);
    throw;
  }
  Assign(loaded);
}
