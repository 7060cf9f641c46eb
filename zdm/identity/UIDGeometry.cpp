// Where the referred object is seen from the referring one, and what shape it has.
#include "platform/core/IZObject.h"
#include "platform/geometry/IGeCurve.h"
#include "platform/geometry/IGePlane.h"
#include "platform/geometry/ZGeIOData.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/host/IZDMEntity.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/identity/UID.h"
#include "zdm/model/IZDMObject.h"

namespace {

GeMatrix ToRoot(const PID* path) {
  GeMatrix placement;
  if (path != nullptr) path->get_SToP(placement);
  return placement;
}

GeMatrix FromRoot(const PID* path) {
  GeMatrix inverse;
  if (!ToRoot(path).GetInverse(inverse)) inverse.SetUnit();
  return inverse;
}

PID* SelfPath(const UID& uid) { return uid.CID != nullptr ? uid.CID->SelfPID : nullptr; }
PID* RefPath(const UID& uid) { return uid.CID != nullptr ? uid.CID->RefPID : nullptr; }

/// Asks the target for a shape, if it is valid, and puts its word on it right.
template <class Ask>
void AskEntity(const UID& uid, bool* valid, Ask ask) {
  bool isValid = false;
  const OID* target = uid.GetReltnOID();
  if (target != nullptr && target->JudgeStatus(ZOS_VALID)) {
    if (auto* entity = zdm::ViewAs<IZDMEntity>(target->Object)) {
      ask(entity, &isValid);
      if (!target->JudgeStatus(ZOS_AFFECTED)) isValid = true;
    }
  }
  if (valid != nullptr) *valid = isValid;
}

/// Who reaches the target through a path gets a copy of its shape.
template <class Shape>
void HandOut(const UID& uid, ZRefPtr<Shape> shape, Shape** out) {
  if (RefPath(uid) != nullptr) shape = zdm::CloneAs<Shape>(shape);
  *out = shape.Detach();
}

}  // namespace

GeMatrix UID::GetSelfToRootMatrix() const { return ToRoot(SelfPath(*this)); }
GeMatrix UID::GetRootToSelfMatrix() const { return FromRoot(SelfPath(*this)); }
GeMatrix UID::GetRefToRootMatrix() const { return ToRoot(RefPath(*this)); }
GeMatrix UID::GetRootToRefMatrix() const { return FromRoot(RefPath(*this)); }

IZDMObject* UID::GetUIDObject() const {
  IZDMObject* object = GetReltnObject();
  if (object == nullptr) return nullptr;
  GeMatrix refToSelf = GetRootToSelfMatrix();
  refToSelf.MultiLeftToSelf(GetRefToRootMatrix());
  if (refToSelf.IsUnit()) return object;
  ZRefPtr<IZDMObject> copy = zdm::CloneAs<IZDMObject>(object);
  if (copy == nullptr) return nullptr;
  copy->Transform(refToSelf);
  copy->ForgetReference();
  return copy.Detach();
}

void UID::Get_Updated_OCS_Valid_GeCurve(GiContext* context, IGeCurve** out, bool* valid) const {
  *out = nullptr;
  AskEntity(*this, valid, [&](IZDMEntity* entity, bool* isValid) {
    ZRefPtr<IGeCurve> curve;
    entity->GetGeCurve(SubID, context, curve.Out(), isValid);
    HandOut(*this, curve, out);
  });
}

void UID::Get_Updated_OCS_Valid_GePlane(GiContext* context, IGePlane** out, bool* valid) const {
  *out = nullptr;
  AskEntity(*this, valid, [&](IZDMEntity* entity, bool* isValid) {
    ZRefPtr<IGePlane> plane;
    entity->GetGePlane(SubID, context, plane.Out(), isValid);
    HandOut(*this, plane, out);
  });
}

void UID::Get_Updated_OCS_Valid_Geometry(ZGeIOData& data, bool* valid) const {
  data.SetGeometry(nullptr);
  AskEntity(*this, valid, [&](IZDMEntity* entity, bool* isValid) {
    entity->GetGeometry(SubID, data, isValid);
    if (RefPath(*this) != nullptr) data.SetGeometry(zdm::CloneAs<IZObject>(data.GetGeometry()));
  });
}
