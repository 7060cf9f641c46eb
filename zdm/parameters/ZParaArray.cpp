#include "zdm/parameters/ZParaArray.h"

#include "platform/core/IZStream.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/LoadDepth.h"
#include "zdm/module/ClassTable.h"
#include "zdm/properties/GUID_UNSET.h"

#include <algorithm>
#include <bit>
#include <compare>
#include <new>
#include <numeric>
#include <utility>
#include <vector>

namespace {

constexpr ULONG kSmallestRecord = 7;  // flags 2, key 2, three bytes that say what follows

bool IsOf(const GUID& definitionGUID, IZParameter* parameter) {
  GUID guid;
  return *parameter->GetDefinitionGUID(&guid) == definitionGUID;
}

zdm::GuidKey KeyOf(IZParameter* parameter) {
  GUID guid;
  return zdm::GuidKey(*parameter->GetDefinitionGUID(&guid));
}

/// The place that a binary search for `wanted` comes to; -1 if it comes to none.
LONG Search(const ZParaArray& array, const zdm::GuidKey& wanted) {
  LONG low = 0;
  LONG high = array.GetCount() - 1;
  while (low <= high) {
    const LONG middle = (low + high) / 2;
    const auto order = wanted <=> KeyOf(array.at(middle));
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
LONG Scan(const ZParaArray& array, const GUID& wanted) {
  for (LONG i = 0; i < array.GetCount(); ++i) {
    if (IsOf(wanted, array.at(i))) return i;
  }
  return -1;
}

ULONG MarkOf(const zdm::GuidKey& key) {
  return static_cast<ULONG>((key.high * 0x9E3779B97F4A7C15 ^ key.low * 0xC2B2AE3D27D4EB4F) >> 32);
}

}  // namespace

void zdm::SortByDefinition(std::span<ParaEntry> entries) {
  for (ParaEntry& entry : entries) entry.key = KeyOf(entry.parameter);
  std::ranges::stable_sort(entries, {}, &ParaEntry::key);
}

ZParaArray::ZParaArray(const ZParaArray& other) : ZParaArray() {
  Allocate(other.count_);
  for (LONG i = 0; i < other.count_; ++i) {
    Append(ZRefPtr<IZParameter>(other.at(i)), other.Marks()[i]);
  }
}

ZParaArray::ZParaArray(ZParaArray&& other) noexcept : ZParaArray() {
  Exchange(other);
  zdm::ChangeWatch::Changed(other.watch_);
}

ZParaArray& ZParaArray::operator=(ZParaArray other) noexcept {
  Exchange(other);
  zdm::ChangeWatch::Changed(watch_);
  return *this;
}

ZParaArray::~ZParaArray() {
  for (LONG i = 0; i < count_; ++i) at(i)->Release();
  if (isMany_) ::operator delete(held_.many.items);
}

/// Of one that is empty.
void ZParaArray::Allocate(LONG room) {
  if (room <= kFew) return;
  constexpr std::size_t kSize = sizeof(void*) + sizeof(ULONG);
  void* const block = ::operator new(static_cast<std::size_t>(room) * kSize);
  auto** const items = static_cast<IZParameter**>(block);
  held_.many = {items, reinterpret_cast<ULONG*>(items + room)};
  isMany_ = true;
}

/// All but the watch.
void ZParaArray::Exchange(ZParaArray& other) {
  std::swap(held_, other.held_);
  std::swap(count_, other.count_);
  std::swap(isMany_, other.isMany_);
}

/// There is room for it.
void ZParaArray::Append(ZRefPtr<IZParameter> parameter, ULONG mark) {
  Marks()[count_] = mark;
  Items()[count_++] = parameter.Detach();
}

// What goes may run any code as it does, so it goes when the array is whole again.
void ZParaArray::RemoveAll() { const ZParaArray gone = std::move(*this); }

void ZParaArray::Assign(std::span<zdm::ParaEntry> entries) {
  ZParaArray assigned;
  assigned.Allocate(static_cast<LONG>(entries.size()));
  for (zdm::ParaEntry& entry : entries) {
    assigned.Append(std::move(entry.parameter), MarkOf(entry.key));
  }
  *this = std::move(assigned);
}

// Copying may run any code, so `source` may become another one meanwhile.
void ZParaArray::AssignCopies(const ZParaArray& source,
                              ZRefPtr<IZParameter> (*copy)(IZParameter*)) {
  ZParaArray copies;
  const LONG room = source.count_;
  copies.Allocate(room);
  while (copies.count_ < std::min(room, source.count_)) {
    const ZRefPtr<IZParameter> copied(source.at(copies.count_));
    const ULONG mark = source.Marks()[copies.count_];
    copies.Append(copy(copied), mark);
  }
  *this = std::move(copies);
}

ZRefPtr<IZParameter> ZParaArray::Take(LONG index) {
  ZRefPtr<IZParameter> taken(at(index));
  ZParaArray rest;
  rest.Allocate(count_ - 1);
  for (LONG i = 0; i < count_; ++i) {
    if (i != index) rest.Append(ZRefPtr<IZParameter>(at(i)), Marks()[i]);
  }
  *this = std::move(rest);
  return taken;
}

IZParameter* ZParaArray::GetParameter(const GUID& definitionGUID) const {
  const LONG index = IndexOf(definitionGUID);
  return index >= 0 ? at(index) : nullptr;
}

LONG ZParaArray::IndexOf(const GUID& definitionGUID) const {
  if (definitionGUID == GUID_UNSET) return -1;
  const LONG place = FindMark(MarkOf(zdm::GuidKey(definitionGUID)));
  return place >= 0 && IsOf(definitionGUID, at(place)) ? place : IndexBySearch(definitionGUID);
}

/// Where the marks name none, several or a wrong one.
LONG ZParaArray::IndexBySearch(const GUID& definitionGUID) const {
  const zdm::GuidKey wanted(definitionGUID);
  if (count_ <= kMostMarks) {
    LookAgain();
    const LONG place = FindMark(MarkOf(wanted));
    if (place == kNone) return -1;
    if (place != kSeveral) return IsOf(definitionGUID, at(place)) ? place : -1;
  }
  const LONG found = Search(*this, wanted);
  return found >= 0 ? found : Scan(*this, definitionGUID);
}

LONG ZParaArray::FirstOf(const GUID& definitionGUID) const {
  const ULONG mark = MarkOf(zdm::GuidKey(definitionGUID));
  const ULONG* const marks = Marks();
  const auto place = static_cast<LONG>(std::find(marks, marks + count_, mark) - marks);
  if (place < count_ && IsOf(definitionGUID, at(place))) return place;
  LookAgain();
  for (LONG i = 0; i < count_; ++i) {
    if (Marks()[i] == mark && IsOf(definitionGUID, at(i))) return i;
  }
  return -1;
}

/// A definition has changed since, or has arrived only now.
void ZParaArray::LookAgain() const {
  for (LONG i = 0; i < count_; ++i) Marks()[i] = MarkOf(KeyOf(at(i)));
}

/// The place of what alone has that mark: where a search comes to as well, as far as the marks
/// know. Without branches: which of the few it is cannot be foretold.
LONG ZParaArray::FindMark(ULONG mark) const {
  ULONGLONG met = 0;
  if (!isMany_) {
    static_assert(kFew == 8);
    static constexpr ULONG kBits[kFew] = {1, 2, 4, 8, 16, 32, 64, 128};
    ULONG bits[kFew];
    for (LONG i = 0; i < kFew; ++i) bits[i] = held_.few.marks[i] == mark ? kBits[i] : 0;
    met = std::accumulate(bits, bits + kFew, ULONG{0}) & ((ULONG{1} << count_) - 1);
  } else if (count_ <= kMostMarks) {
    for (LONG i = 0; i < count_; ++i) met |= ULONGLONG{held_.many.marks[i] == mark} << i;
  } else {
    return kSeveral;
  }
  if (met == 0) return kNone;
  return (met & (met - 1)) == 0 ? static_cast<LONG>(std::countr_zero(met)) : kSeveral;
}

LONG ZParaArray::IndexOf(const IZParameter* parameter) const {
  IZParameter* const* const items = Items();
  IZParameter* const* const found = std::find(items, items + count_, parameter);
  return found != items + count_ ? static_cast<LONG>(found - items) : -1;
}

bool ZParaArray::IsExist(const GUID& definitionGUID) const {
  return definitionGUID != GUID_UNSET && Search(*this, zdm::GuidKey(definitionGUID)) >= 0;
}

void ZParaArray::SetOwner(IZParameterArray* array) const {
  for (LONG i = 0; i < count_; ++i) at(i)->SetOwner(array);
}

// Parameter storage record, little-endian.
//   offset  size  field
//        0     4  number of parameters, signed; below 1 for none
//   then for each parameter in its order
//        0     ?  the parameter's own record
void ZParaArray::Save(IZStream* stream, IZDatabase* database) {
  const ZParaArray saved = *this;  // as it is now: saving may run any code
  stream->WriteCount(saved.count_);
  for (LONG i = 0; i < saved.count_; ++i) saved.at(i)->Save(stream, database);
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
