#include "platform/core/ZCore.h"

#include "platform/ole/CAtlException.h"

#include <cstring>
#include <deque>
#include <unordered_map>
#include <utility>

namespace {

struct GuidHash {
  std::size_t operator()(const GUID& guid) const {
    ULONGLONG halves[2];
    std::memcpy(halves, &guid, sizeof(halves));
    return static_cast<std::size_t>(halves[0] ^ (halves[1] * 0x9E3779B97F4A7C15ULL));
  }
};

}  // namespace

struct CZFactory::Table {
  std::deque<CZRClass> descriptions;  // a deque keeps descriptors where they are
  std::vector<CZRClass*> order;
  std::unordered_map<GUID, CZRClass*, GuidHash> byClassId;
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

CZRClass* CZFactory::Find(const GUID& classId) const {
  auto it = table_->byClassId.find(classId);
  return it != table_->byClassId.end() ? it->second : nullptr;
}

const std::vector<CZRClass*>& CZFactory::GetClasses() const { return table_->order; }

CZRClass* CZFactory::RegisterClass(const CZRClass& description) {
  if (CZRClass* known = Find(description.GetClassID())) return known;
  CZRClass* added = &table_->descriptions.emplace_back(description);
  table_->order.push_back(added);
  table_->byClassId.emplace(added->GetClassID(), added);
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
