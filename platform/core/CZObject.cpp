#include "platform/core/CZObject.h"

#include "platform/core/CZRClass.h"
#include "platform/core/ChangeWatch.h"
#include "platform/core/IZObject.h"
#include "platform/core/ZWeakHandle.h"
#include "platform/ole/CAtlException.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

// While an object is being destroyed, references that come and go must not end it a second time.
constexpr ULONG kDestroyingCount = 0x40000000;

struct InterfaceNames {
  std::unordered_map<std::string, unsigned short> ids;
  std::vector<const std::string*> names;  // keys of `ids`, by id from 1
};

InterfaceNames& Names() {
  // Made while the library is loaded, gone when it is unloaded.
  static InterfaceNames names;
  return names;
}

}  // namespace

struct CZObject::Extras {
  std::vector<std::pair<unsigned short, IZObject*>> aggregated;  // one reference each
  ZWeakHandle::Block* weak = nullptr;

  auto Find(unsigned short id) {
    auto it = aggregated.begin();
    while (it != aggregated.end() && it->first != id) ++it;
    return it;
  }
};

CZObject::CZObject() = default;
CZObject::CZObject(const CZObject&) {}
CZObject& CZObject::operator=(const CZObject&) { return *this; }

CZObject::~CZObject() {
  count_ = kDestroyingCount;  // also for an object that ends without a release
  zdm::ChangeWatch::Changed(*this);
  if (extras_ == nullptr) return;
  if (ZWeakHandle::Block* block = std::exchange(extras_->weak, nullptr)) {
    block->object = nullptr;
    ZWeakHandle::Drop(block);
  }
  while (!extras_->aggregated.empty()) {
    IZObject* object = extras_->aggregated.back().second;
    extras_->aggregated.pop_back();
    object->Release();
  }
}

CZObject::Extras& CZObject::GetExtras() {
  if (extras_ == nullptr) extras_ = std::make_unique<Extras>();
  return *extras_;
}

CZRClass* CZObject::getZRClass() const { return nullptr; }
bool CZObject::EqualTo(const CZObject* other) { return this == other; }
bool CZObject::IsA(unsigned short) { return false; }
ULONGLONG CZObject::_GetOffsetofClass(unsigned short) { return ~ULONGLONG{0}; }

GUID CZObject::GetZRID() const {
  const CZRClass* description = getZRClass();
  return description != nullptr ? description->GetClassID() : GUID_NULL;
}

GUID CZObject::GetZRMID() const {
  const CZRClass* description = getZRClass();
  return description != nullptr ? description->GetModuleID() : GUID_NULL;
}

HRESULT CZObject::GetClassID(GUID* out) const {
  if (out == nullptr) return E_INVALIDARG;
  *out = GetZRID();
  return getZRClass() != nullptr ? S_OK : E_FAIL;
}

GUID CZObject::GetObjectCLSID() const { return GetZRID(); }
IZObject* CZObject::GetIZObject() { return nullptr; }
void* CZObject::GetLPVOID() { return this; }

void CZObject::AddAggregation(unsigned short id, IZObject* object) {
  if (object == nullptr) {
    RemoveAggregation(id);
    return;
  }
  Extras& extras = GetExtras();
  if (auto it = extras.Find(id); it != extras.aggregated.end()) {
    object->AddRef();
    std::exchange(it->second, object)->Release();
  } else {
    extras.aggregated.emplace_back(id, object);
    object->AddRef();
  }
}

IZObject* CZObject::GetAggregation(unsigned short id) {
  if (extras_ == nullptr) return nullptr;
  auto it = extras_->Find(id);
  return it != extras_->aggregated.end() ? it->second : nullptr;
}

void CZObject::RemoveAggregation(unsigned short id) {
  if (extras_ == nullptr) return;
  auto it = extras_->Find(id);
  if (it == extras_->aggregated.end()) return;
  IZObject* object = it->second;
  extras_->aggregated.erase(it);
  object->Release();
}

bool CZObject::HasAggregation(unsigned short id) { return GetAggregation(id) != nullptr; }

unsigned short CZObject::AddInterface(const char* name) {
  InterfaceNames& table = Names();
  if (name == nullptr) return 0;
  if (auto it = table.ids.find(name); it != table.ids.end()) return it->second;
  if (table.names.size() >= 0xFFFF) throw CAtlException(E_OUTOFMEMORY);
  table.names.reserve(table.names.size() + 1);
  const auto id = static_cast<unsigned short>(table.names.size() + 1);
  table.names.push_back(&table.ids.emplace(name, id).first->first);
  return id;
}

const char* CZObject::GetInterfaceName(unsigned short id) {
  const InterfaceNames& table = Names();
  return id >= 1 && id <= table.names.size() ? table.names[id - 1u]->c_str() : nullptr;
}

void CZObject::Destroy_XXX() {
  count_ = kDestroyingCount;
  // Handles die before the object does, so that nothing reaches a half-destroyed one.
  if (extras_ != nullptr && extras_->weak != nullptr) extras_->weak->object = nullptr;
  if (const CZRClass* description = getZRClass()) {
    description->Destroy(this);
  } else {
    delete this;
  }
}

ULONG CZObject::DecrementCount() {
  const ULONG before = count_--;
  if (before == 1) {
    Destroy_XXX();
    return 0;
  }
  return before - 1;
}

ZWeakHandle::ZWeakHandle(CZObject* object) {
  if (object == nullptr || object->count_ >= kDestroyingCount) return;
  CZObject::Extras& extras = object->GetExtras();
  if (extras.weak == nullptr) extras.weak = new Block{object, 1};
  block_ = extras.weak;
  ++block_->holders;
}

ZWeakHandle::ZWeakHandle(const ZWeakHandle& other) : block_(other.block_) {
  if (block_ != nullptr) ++block_->holders;
}

ZWeakHandle::ZWeakHandle(ZWeakHandle&& other) noexcept
    : block_(std::exchange(other.block_, nullptr)) {}

ZWeakHandle& ZWeakHandle::operator=(ZWeakHandle other) noexcept {
  std::swap(block_, other.block_);
  return *this;
}

ZWeakHandle::~ZWeakHandle() { Drop(block_); }

void ZWeakHandle::Drop(Block* block) {
  if (block != nullptr && --block->holders == 0) delete block;
}
