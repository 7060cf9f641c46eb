// The base of relations to one object. The target is a borrowed ID record, which outlives the
// object that carries it. T is IZSingleReltn or an interface derived from it.
// Stream form: above Save in IZSingleReltnImpl.inl.
#pragma once

#include "zdm/relations/IZRelationImpl.h"
#include "zdm/relations/IZSingleReltn.h"

#include <utility>

template <class T>
class IZSingleReltnImpl : public IZRelationImpl<T> {
 public:
  using IZRelationImpl<T>::Clone;

  /// Takes status, tag and the target itself; from a relation that is no single-target one, no
  /// target. Null takes the target away and leaves the rest.
  void CopyFrom(IZRelation* other) override;
  /// A record that cannot be read whole changes nothing. A target that `database` does not list is
  /// none.
  void Load(IZStream* stream, IZDatabase* database) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  /// True with ZRS_VALID and a target that is valid itself.
  bool IsValid() override;
  /// Offers the target, unless there is none, through MapOID.
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override;
  /// True for the same class and the same target record.
  bool JudgeSame(IZRelation* other) override;

  void SetReltnObj(IZObject* object) override;
  IZDMObject* GetReltnObject() override;
  IZDMObject* GetValidReltnObject() override;
  void SetReltnOID(OID* oid) override { PointAt(oid); }
  OID* GetReltnOID() override { return target_; }

  /// Null here.
  virtual IZObject* ReservedQuery() { return nullptr; }
  /// As Clone(IZRelation**), by the copy's single-target view.
  virtual void Clone(IZSingleReltn** out);

 protected:
  void PointAt(OID* target) {
    if (std::exchange(target_, target) != target) zdm::ChangeWatch::Changed(*this);
  }
  /// Offers the target, if there is one, as that of `reltn`.
  bool OfferTarget(IZDMObject* root, IZDMObject* owner, IZRelation* reltn, IZReltnVisitor* visitor);

  OID* target_ = nullptr;
};

#include "zdm/relations/IZSingleReltnImpl.inl"
