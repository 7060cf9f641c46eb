#include "platform/core/ZCore.h"

#include "platform/ole/CAtlException.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <utility>
#include <vector>

namespace {

/// Descriptors by class identifier: each object that is made is looked for here, so it takes one
/// access to memory. Nothing is taken out.
class ByClassId {
 public:
  CZRClass* Find(const GUID& classId) const {
    return slots_.empty() ? nullptr : slots_[PlaceOf(classId)].description;
  }

  void Add(CZRClass* description) {
    if (2 * ++count_ > slots_.size()) Grow();
    slots_[PlaceOf(description->GetClassID())] = {description->GetClassID(), description};
  }

 private:
  struct Slot {
    GUID classId = {};
    CZRClass* description = nullptr;
  };

  /// That of the identifier, or the free one that it would get.
  std::size_t PlaceOf(const GUID& classId) const {
    ULONGLONG halves[2];
    std::memcpy(halves, &classId, sizeof(halves));
    const ULONGLONG mixed = (halves[0] ^ halves[1]) * 0x9E3779B97F4A7C15ULL;
    const std::size_t last = slots_.size() - 1;
    auto at = static_cast<std::size_t>(mixed >> 32) & last;
    while (slots_[at].description != nullptr && !(slots_[at].classId == classId)) {
      at = (at + 1) & last;
    }
    return at;
  }

  void Grow() {
    std::vector<Slot> former(std::max<std::size_t>(2 * slots_.size(), 64));
    former.swap(slots_);
    for (const Slot& slot : former) {
      if (slot.description != nullptr) slots_[PlaceOf(slot.classId)] = slot;
    }
  }

  std::vector<Slot> slots_;  // a power of two, at most half of them taken
  std::size_t count_ = 0;
};

}  // namespace

struct CZFactory::Table {
  std::deque<CZRClass> descriptions;  // a deque keeps descriptors where they are
  std::vector<CZRClass*> order;
  ByClassId byClassId;
  CreateReactor reactor;
};

CZFactory::CZFactory() : table_(new Table) {}
CZFactory::~CZFactory() { delete table_; }

CZObject* CZFactory::Create(const GUID& classId, const GUID* moduleId) const {
  const CZRClass* description = Find(classId);
  if (description == nullptr) return nullptr;
  const bool anyModule = moduleId == nullptr || *moduleId == GUID_NULL;
  if (!anyModule && !(*moduleId == description->GetModuleID())) return nullptr;
  CZObject* object = description->Create();
  if (object == nullptr) throw CAtlException(E_OUTOFMEMORY);
  return object;
}

CZRClass* CZFactory::Find(const GUID& classId) const { return table_->byClassId.Find(classId); }

const std::vector<CZRClass*>& CZFactory::GetClasses() const { return table_->order; }

CZRClass* CZFactory::RegisterClass(const CZRClass& description) {
  if (CZRClass* known = Find(description.GetClassID())) return known;
  CZRClass* added = &table_->descriptions.emplace_back(description);
  table_->order.push_back(added);
  table_->byClassId.Add(added);
  return added;
}

void CZFactory::RegisterCreated(CZObject* object, const GUID& classId) const {
  if (object != nullptr && table_->reactor) table_->reactor(object, classId);
}

CZFactory::CreateReactor CZFactory::SetCreateReactor(CreateReactor reactor) {
  return std::exchange(table_->reactor, std::move(reactor));
}

CZFactory* ZCore::GetZFactory() {
  // Made while the library is loaded; its descriptors live until it is unloaded.
  static CZFactory factory;
  return &factory;
}

CZRClass::CZRClass(const GUID& moduleId, const char* moduleName, const GUID& classId,
                   const char* name, ZClassCreator creator, ZClassDestroyer destroyer,
                   unsigned short flag)
    : moduleId_(moduleId),
      moduleName_(moduleName),
      classId_(classId),
      name_(name),
      creator_(creator),
      destroyer_(destroyer),
      flag_(flag) {}

CZRClass* newZRClass(const GUID& moduleId, const char* moduleName, const GUID& classId,
                     const char* name, ZClassCreator creator, ZClassDestroyer destroyer,
                     unsigned short flag) {
  if (moduleName == nullptr || name == nullptr || creator == nullptr || destroyer == nullptr) {
    return nullptr;
  }
  return ZCore::GetZFactory()->RegisterClass(
      CZRClass(moduleId, moduleName, classId, name, creator, destroyer, flag));
}
