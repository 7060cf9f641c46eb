#include "document/ManagerOrder.h"

#include "document/CZDocument.h"
#include "platform/core/IZStream.h"
#include "zdm/identity/OID.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

namespace zdm {

namespace {

/// Where opening puts an object: hard IDs from -2 downwards, then soft ones upwards.
LONGLONG PlaceOf(LONG id) { return id < 0 ? -LONGLONG{id} : LONGLONG{id} + 0x1'0000'0000; }

/// The saved objects of a manager, each once.
std::vector<LONG> MembersOf(IZDMObjMgr& manager) {
  std::vector<LONG> ids;
  bool isAscending = true;
  for (LONGLONG pos = manager.GetHeadPosition(); pos != 0;) {
    IZDMObject* object = manager.GetNext(pos);
    if (object == nullptr || !object->IsObjectValid()) continue;
    if (object->GetOwnerOID() != manager.GetOID()) continue;
    const auto id = static_cast<LONG>(object->GetID());
    isAscending = isAscending && (ids.empty() || PlaceOf(ids.back()) < PlaceOf(id));
    ids.push_back(id);
  }
  if (isAscending) return ids;
  std::unordered_set<LONG> seen;
  std::erase_if(ids, [&](LONG id) { return !seen.insert(id).second; });
  return ids;
}

void SaveOrderOf(IZDMObject* object, IZStream* stream) {
  auto* manager = ViewAs<IZDMObjMgr>(object);
  if (manager == nullptr) return;
  const std::vector<LONG> ids = MembersOf(*manager);
  if (std::ranges::is_sorted(ids, {}, PlaceOf)) return;
  stream->WriteCount(static_cast<LONG>(manager->GetID()));
  stream->WriteCount(static_cast<LONG>(ids.size()));
  for (const LONG id : ids) stream->WriteCount(id);
}

void Reorder(IZDMObjMgr& manager, const std::vector<LONG>& ids) {
  std::unordered_map<LONG, LONGLONG> positions;
  for (LONGLONG pos = manager.GetHeadPosition(); pos != 0;) {
    const LONGLONG at = pos;
    IZDMObject* object = manager.GetNext(pos);
    if (object != nullptr) positions.emplace(static_cast<LONG>(object->GetID()), at);
  }
  for (const LONG id : ids) {
    const auto found = positions.find(id);
    if (found != positions.end()) manager.MoveToTail(found->second);
  }
}

}  // namespace

void SaveOrder(const COIDManager& ids, CZDocument& root, IZStream* stream) {
  for (const OID* oid : ids.GetOIDs()) {
    if (oid->Object != nullptr && oid->JudgeStatus(ZOS_VALID)) SaveOrderOf(oid->Object, stream);
  }
  SaveOrderOf(&root, stream);
}

bool LoadOrder(CZDocument& root, IZStream* stream) {
  while (stream->GetBytesLeft() != 0) {
    if (stream->GetBytesLeft() < 8) return false;
    const LONG managerId = stream->ReadCount();
    const LONG count = stream->ReadCount();
    if (count < 0 || static_cast<ULONGLONG>(count) > stream->GetBytesLeft() / 4) return false;
    std::vector<LONG> ids(static_cast<std::size_t>(count));
    stream->Read(ids.data(), static_cast<ULONG>(count * 4));
    const OID* oid = root.GetOIDManager()->GetOIDByID(managerId);
    auto* manager = oid != nullptr ? ViewAs<IZDMObjMgr>(oid->Object) : nullptr;
    if (manager != nullptr) Reorder(*manager, ids);
  }
  return true;
}

}  // namespace zdm
