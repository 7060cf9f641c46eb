#include "zdm/relations/ZReltnVisitorSelfContained.h"

#include "zdm/framework/ZRefPtr.h"
#include "zdm/identity/CID.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/ObjectOptions.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/UID.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObject.h"

#include <vector>

ZDM_OBJECT_BODY(ZReltnVisitorSelfContained)

namespace {

constexpr LONG kMember = ZOS_LOADING;

/// The objects of a collection, marked while this lives.
class Members {
 public:
  // Delegates, so that the destructor runs also when a mark cannot be set.
  explicit Members(IZDMObjColl& objects) : Members() {
    for (LONGLONG pos = objects.GetHeadPosition(); pos != 0;) {
      if (IZDMObject* object = objects.GetNext(pos)) objects_.emplace_back(object);
    }
    for (IZDMObject* object : objects_) object->SetStatus(kMember);
  }
  Members(const Members&) = delete;
  Members& operator=(const Members&) = delete;
  ~Members() {
    for (IZDMObject* object : objects_) object->ClearStatus(kMember);
  }

  const std::vector<ZRefPtr<IZDMObject>>& GetObjects() const { return objects_; }

 private:
  Members() = default;

  std::vector<ZRefPtr<IZDMObject>> objects_;  // held, as a relation that is asked may run any code
};

/// What leads out of the set does not stay valid.
bool Cut(IZRelation* reltn) {
  if (reltn != nullptr) reltn->ClearReltnStatus(ZRS_VALID);
  return true;
}

}  // namespace

void ZReltnVisitorSelfContained::SelfContained(IZDMObjColl* objects) {
  if (objects == nullptr) return;
  const Members members(*objects);
  for (IZDMObject* object : members.GetObjects()) {
    if (object->JudgeOptionAllowed(zdm::kReferencesCount)) object->VisitReferences(object, this);
  }
}

bool ZReltnVisitorSelfContained::Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) {
  if (reltn != nullptr && !reltn->IsReltnDiffusible()) reltn->Accept(root, owner, this);
  return false;
}

bool ZReltnVisitorSelfContained::MapUID(IZDMObject* root, IZDMObject* owner, IZRelation* reltn,
                                        UID* uid) {
  if (reltn == nullptr || uid == nullptr || uid->CID == nullptr) return false;
  CID& reference = *uid->CID;
  if (MapPID(root, owner, reltn, &reference.SelfPID)) return true;
  if (reference.ReltnOID == nullptr || reference.ReltnOID->JudgeStatus(kMember)) return false;
  return Cut(reltn);
}

bool ZReltnVisitorSelfContained::MapPID(IZDMObject*, IZDMObject*, IZRelation* reltn, PID** pid) {
  if (*pid == nullptr || (*pid)->OIDs.empty()) return false;
  const OID* first = (*pid)->OIDs.front();
  if (first == nullptr || first->JudgeStatus(kMember)) return false;
  return Cut(reltn);
}
