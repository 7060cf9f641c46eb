// What all relation collections have in common: the list, its walks by status, offering, the stream
// form, and the neutral answers of a relation without a status word of its own.
// Others are further bases, such as IZObjectImpl<IZReltnCollector>; a relation operation is
// answered alike in each of them.
#pragma once

#include "zdm/framework/IZListImpl.h"
#include "zdm/relations/IZDisplayImpl.h"
#include "zdm/relations/IZReltnColl.h"

namespace zdm {

template <class... Others>
class ReltnCollBases : public IZListImpl<IZReltnColl, IZRelation>, public Others... {};

}  // namespace zdm

template <class... Others>
class IZReltnCollImpl : public IZDisplayImpl<zdm::ReltnCollBases<Others...>> {
 public:
  /// Null: copies are made with the other two forms.
  IZObject* Clone() override { return nullptr; }

  LONG GetReltnStatus() override { return 0; }
  bool JudgeReltnStatus(LONG) override { return false; }
  bool IsReltnDiffusible() override { return false; }
  void SetReltnDiffusible(bool) override {}
  /// Appends what the record holds to the elements present. A class identifier that the factory
  /// does not know or that is no relation, a record that cannot be read, and records nested deeper
  /// than zdm::LoadDepth::kMax throw CAtlException(E_FAIL); what was read before stays.
  void Load(IZStream* stream, IZDatabase* database) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  bool IsValid() override { return true; }
  void SetReltnTag(LONG) override {}
  LONG GetReltnTag() override { return -1; }
  /// Offers the valid elements from head to tail to Visit(root, owner, IZRelation*). The visitor
  /// may change the collection and even end it; what it adds at the tail is not offered. Offered to
  /// itself, a collection shows nothing.
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override;

  LONGLONG GetHeadStatusPosition(LONG mask) override;
  LONGLONG GetTailStatusPosition(LONG mask) override;
  IZRelation* GetStatusNext(LONG mask, LONGLONG& pos) override;
  IZRelation* GetStatusPrev(LONG mask, LONGLONG& pos) override;
  void Clone(IZReltnColl** out, bool deep) override;
  LONGLONG GetValidHeadPosition() override { return this->GetHeadStatusPosition(ZRS_VALID); }
  LONGLONG GetValidTailPosition() override { return this->GetTailStatusPosition(ZRS_VALID); }
  IZRelation* GetValidNext(LONGLONG& pos) override { return this->GetStatusNext(ZRS_VALID, pos); }
  IZRelation* GetValidPrev(LONGLONG& pos) override { return this->GetStatusPrev(ZRS_VALID, pos); }

 protected:
  using List = CZList<IZRelation>;

  static bool Passes(IZRelation* element, LONG mask) {
    return element != nullptr && element->JudgeReltnStatus(mask);
  }
  /// True at the first element that is not null and for which `test(IZRelation&)` is. What is
  /// called may change the collection; an element removed before its turn is left out.
  template <class Test>
  bool AnyOf(Test test);
  /// Calls `action(IZRelation&)` for every element that is not null, as AnyOf does.
  template <class Action>
  void ForEach(Action action);

 private:
  static POSITION ToPosition(LONGLONG pos) { return reinterpret_cast<POSITION>(pos); }
  static LONGLONG FromPosition(POSITION pos) { return reinterpret_cast<LONGLONG>(pos); }
  POSITION FirstFrom(POSITION pos, LONG mask);
  POSITION LastFrom(POSITION pos, LONG mask);
};

#include "zdm/relations/IZReltnCollImpl.inl"
