// The relation that ties an object to its category, with the object's own display values.
// It takes visibility, two flags and level over from the category that it is pointed at; display
// attributes and hatches start with their defaults. A target that is gone or no category counts as
// none. Trees of relations are walked to a depth of 256 and a size of 10^6; a larger one throws
// CAtlException(E_FAIL). Stream form: above Save in CZCategoryReltn.cpp.
#pragma once

#include "zdm/categories/IZCategoryReltn.h"
#include "zdm/host/IZDispAttrib.h"
#include "zdm/host/ZGiHatchData.h"
#include "zdm/module/ClassTable.h"
#include "zdm/relations/IZReltnColl.h"
#include "zdm/relations/IZSingleReltnImpl.h"

class ZDM_API CZCategoryReltn : public IZSingleReltnImpl<IZCategoryReltn> {
  ZDM_OBJECT(CZCategoryReltn)
 public:
  /// Visible, valid and diffusible, without target.
  CZCategoryReltn();

  // IZDisplay: for every kind of drawing alike.
  bool IsVisible(eZGiDraw, GiContext*) override { return JudgeFlag(kVisible); }
  void SetVisibility(eZGiDraw, bool visible, GiContext*) override { SetFlag(kVisible, visible); }

  // IZRelation.
  /// Takes everything of another category relation in place of what the category says; clones of
  /// its sub-relations are appended. Of another relation only status, tag and target; null takes
  /// the target away.
  void CopyFrom(IZRelation* other) override;
  void Load(IZStream* stream, IZDatabase* database) override;
  /// Throws CAtlException(E_FAIL) where the host has no display attributes.
  void Save(IZStream* stream, IZDatabase* database) override;
  /// Has attributes and sub-relations check themselves, without a database.
  void AssertValid(IZDatabase* database) override;
  /// Offers the target through MapOID without naming the relation, then the attributes and the
  /// sub-relations.
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override;

  // IZSingleReltn.
  /// Takes visibility, flags and level over from the category, unless it is the target already.
  void SetReltnObj(IZObject* object) override;

  // IZCategoryReltn.
  IZDispAttrib* GetProjectionDispAttrib() override { return projectionAttrib_; }
  void SetProjectionDispAttrib(IZDispAttrib* source) override;
  IZDispAttrib* GetSectionDispAttrib() override { return sectionAttrib_; }
  void SetSectionDispAttrib(IZDispAttrib* source) override;
  void AddSubReltn(IZObject* relation) override;
  IZReltnColl* GetSubReltns() override { return subReltns_; }
  void GetCategoryName(BSTR* out) override;
  IZCategory* GetCategory() override;
  ULONG GetCategoryNumber() override;
  IZDispAttrib* FindProjectionDispAttrib(LONG number) override;
  IZDispAttrib* FindSectionDispAttrib(LONG number) override;
  bool FindCategoryVisible(LONG number, bool* found) override;
  IZCategoryReltn* FindCategoryReltn(LONG number) override;
  ZGiHatchData* GetHatchA() override { return &hatchA_; }
  void SetHatchA(const ZGiHatchData* source) override;
  ZGiHatchData* GetHatchB() override { return &hatchB_; }
  void SetHatchB(const ZGiHatchData* source) override;
  void SetFlag02(bool set) override { SetFlag(kFlag02, set); }
  bool IsFlag02() override { return JudgeFlag(kFlag02); }
  void SetFlag04(bool set) override { SetFlag(kFlag04, set); }
  bool IsFlag04() override { return JudgeFlag(kFlag04); }
  void SetLevel(BYTE level) override { level_ = level; }
  BYTE GetLevel() override { return level_; }
  void SetFlag08(bool set) override { SetFlag(kFlag08, set); }
  bool IsFlag08() override { return JudgeFlag(kFlag08); }
  bool JudgeSameValues(IZCategoryReltn* other) override;
  void CollectReltns(IZReltnColl* coll) override;
  void CopyValuesFrom(IZCategoryReltn* other) override;
  void ApplyToCategory() override;

  /// AddSubReltn of a relation that this one does not hang below.
  void AppendSubReltn(IZObject* relation);

 private:
  enum Flag : BYTE { kVisible = 0x01, kFlag02 = 0x02, kFlag04 = 0x04, kFlag08 = 0x08 };

  bool JudgeFlag(Flag flag) const { return (flags_ & flag) != 0; }
  void SetFlag(Flag flag, bool set) {
    flags_ = static_cast<BYTE>(set ? flags_ | flag : flags_ & ~flag);
  }
  bool HasNumber(LONG number);
  void CopyAll(IZRelation* other, bool withSubReltns);
  void CopyTarget(IZSingleReltn* other);
  template <class Test>
  bool AnySubReltn(Test test);

  BYTE flags_ = kVisible;
  ZRefPtr<IZDispAttrib> projectionAttrib_;  // null only where the host has no such class
  ZRefPtr<IZDispAttrib> sectionAttrib_;
  ZRefPtr<IZReltnColl> subReltns_;
  ZGiHatchData hatchA_;
  ZGiHatchData hatchB_;
  BYTE level_ = 4;
};
