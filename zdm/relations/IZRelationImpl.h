// The base of relations: status word, tag and spare word, and neutral answers to everything else.
// T is a relation interface, IZRelation or one derived from it. A class shows what it refers to by
// overriding Accept, and extends CopyFrom, Load, Save and JudgeSame. Copies are made through the
// factory, so the class must be registered there. Stream form: above Save in IZRelationImpl.inl.
#pragma once

#include "platform/core/ChangeWatch.h"
#include "zdm/framework/IZObjectImpl.h"
#include "zdm/relations/IZDisplayImpl.h"
#include "zdm/relations/IZRelation.h"

template <class T>
class IZRelationImpl : public IZDisplayImpl<IZObjectImpl<T>> {
 public:
  /// A copy with count 0; null when the factory does not know the class.
  IZObject* Clone() override;

  /// Replaces the whole status word and the tag by those of `other`; null changes nothing.
  void CopyFrom(IZRelation* other) override;
  void Update(IZUpdater*, GiContext*) override {}
  void SetReltnStatus(LONG bits) override { TakeStatus(status_ | static_cast<ULONG>(bits)); }
  LONG GetReltnStatus() override { return static_cast<LONG>(status_); }
  void ClearReltnStatus(LONG bits) override { TakeStatus(status_ & ~static_cast<ULONG>(bits)); }
  bool JudgeReltnStatus(LONG mask) override {
    return (status_ & static_cast<ULONG>(mask)) == static_cast<ULONG>(mask);
  }
  bool IsReltnDiffusible() override { return this->JudgeReltnStatus(ZRS_DIFFUSIBLE); }
  void SetReltnDiffusible(bool diffusible) override;
  /// A record that cannot be read whole changes nothing.
  void Load(IZStream* stream, IZDatabase* database) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  bool IsValid() override { return this->JudgeReltnStatus(ZRS_VALID); }
  void SetReltnTag(LONG tag) override { tag_ = tag; }
  LONG GetReltnTag() override { return tag_; }
  void AssertValid(IZDatabase*) override {}
  /// Nothing to offer: false.
  bool Accept(IZDMObject*, IZDMObject*, IZReltnVisitor*) override { return false; }
  /// True when `other` is of the same class.
  bool JudgeSame(IZRelation* other) override;

  /// Makes a relation of the same class, gives it this one's status bits (beside those that its
  /// constructor set) and tag, and lets it copy from this one.
  /// @param out  the copy, one reference for the caller; null when the factory cannot make it.
  virtual void Clone(IZRelation** out);
  virtual bool IsDumpRef() { return false; }

 protected:
  /// The whole status word; only valid relations are offered.
  void TakeStatus(ULONG status) {
    const bool isOfferedAlike = ((status_ ^ status) & ZRS_VALID) == 0;
    status_ = status;
    if (!isOfferedAlike) zdm::ChangeWatch::Changed(*this);
  }

  ULONG status_ = ZRS_VALID;
  LONG tag_ = -1;
  ULONG spare_ = 0;  // carried, never interpreted
};

#include "zdm/relations/IZRelationImpl.inl"
