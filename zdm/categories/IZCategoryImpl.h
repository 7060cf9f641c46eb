// What a category is built on: a data-model object that carries the display defaults of a class of
// objects, and is categorizable itself. Parent, members, material and reference are relations, so
// that walks and remapping reach them; they and the display attributes are made when first needed,
// and stay absent where the host has no such class.
// Stream form: above SaveOwnData in IZCategoryImpl.cpp.
#pragma once

#include "zdm/categories/IZCategorizing.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/categories/IZCategoryReltn.h"
#include "zdm/host/IZDispAttrib.h"
#include "zdm/host/IZGiMaterial.h"
#include "zdm/host/ZGiHatchData.h"
#include "zdm/model/IZDMObjectImpl.h"
#include "zdm/relations/IZSingleReltn.h"

class ZDM_API IZCategoryImpl : public IZObjectImpl<IZCategorizing>,
                               public IZDMObjectImpl<IZCategory> {
 public:
  using IZDMObjectImpl::AddRef;
  using IZDMObjectImpl::CopyFrom;
  using IZDMObjectImpl::GetMaterial;
  using IZDMObjectImpl::JudgeSame;
  using IZDMObjectImpl::Release;

  IZObject* Clone() override;

  // IZCategorizing.
  void SetCategoryReltn(IZObject* relation) override;
  IZCategoryReltn* GetCategoryReltn() override;
  IZDispAttrib* GetCategorizedDispAttrib(bool projection) override;
  ZGiHatchData* GetCategorizedHatch(bool second) override;
  bool IsCategorizedVisible() override;

  // IZDisplay.
  /// A copy of the name; null without one.
  void GetName(BSTR* name) override;
  void SetName(const OLECHAR* name) override;

  // IZDMObject.
  /// All but level and category relation; members as clones of their relations. Of an object that
  /// is no category, what any object takes.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  /// True for any category of the same number.
  bool JudgeSame(IZDMObject* other) override;
  /// After what any object offers: display attributes, material, reference and parent as relations,
  /// then the members.
  bool VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) override;
  ULONG GetNumber() override;
  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;

  // IZCategory.
  bool IsFlag8000() override;
  void SetFlag8000(bool set) override;
  bool IsFlag4000() override;
  void SetFlag4000() override;
  bool IsFlag2000() override;
  void SetFlag2000(bool set) override;
  bool IsFlag1000() override;
  void SetFlag1000(bool set) override;
  LONG CategoryReserved138() override;
  void CategoryReserved139() override;
  bool IsFlag0800() override;
  void SetFlag0800(bool set) override;
  IZDispAttrib* GetProjectionDispAttrib() override;
  void SetProjectionDispAttrib(IZDispAttrib* source) override;
  ZGiHatchData* GetHatchA() override;
  void SetHatchA(const ZGiHatchData* source) override;
  IZDispAttrib* GetSectionDispAttrib() override;
  void SetSectionDispAttrib(IZDispAttrib* source) override;
  ZGiHatchData* GetHatchB() override;
  void SetHatchB(const ZGiHatchData* source) override;
  void SetCategoryName(const OLECHAR* name) override;
  IZCategory* GetParentCategory() override;
  void SetParentCategory(IZObject* parent) override;
  bool IsCategoryVisible() override;
  void SetCategoryVisible(bool visible) override;
  void SetNumber(ULONG number) override;
  /// Appends a relation to `object`, also a second one, and makes this category its parent. Null
  /// changes nothing.
  void AddMember(IZDMObject* object) override;
  IZDMObjColl* GetMembers() override;
  LONG GetMemberCount() override;
  IZReltnColl* GetMemberColl() override;
  void SetMemberColl(IZObject* relations) override;
  /// The relation holds those of the members in their order, and so on down. Left out are members
  /// that are no category, those from which the tree comes, and those below a depth of 256. Throws
  /// CAtlException(E_FAIL), with nothing made, for a tree of more than 10^6 relations.
  IZCategoryReltn* CreateCategoryReltn() override;
  void SetFlags(USHORT flags) override;
  USHORT GetFlags() override;
  void SetFlag0100(bool set) override;
  bool IsFlag0100() override;
  void SetFlag0200(bool set) override;
  bool IsFlag0200() override;
  void SetLevel(BYTE level) override;
  BYTE GetLevel() override;
  void SetFlag0080(bool set) override;
  bool IsFlag0080() override;
  IZGiMaterial* GetMaterial() override;
  void SetMaterial(IZObject* material) override;
  IZDMObject* GetReference() override;
  void SetReference(IZObject* object) override;
  GUID* GetKey() override;
  void SetKey(const GUID* key) override;

 private:
  bool JudgeFlag(unsigned flag) const { return (flags_ & flag) != 0; }
  void SetFlag(unsigned flag, bool set) {
    flags_ = static_cast<USHORT>(set ? flags_ | flag : flags_ & ~flag);
  }

  ULONG number_ = 0;
  zdm::Bstr name_;
  USHORT flags_ = 0xDC00;
  ZRefPtr<IZReltnColl> members_;
  ZRefPtr<IZSingleReltn> parent_;
  ZRefPtr<IZDispAttrib> projectionAttrib_;
  ZRefPtr<IZDispAttrib> sectionAttrib_;
  ZGiHatchData hatchA_;
  ZGiHatchData hatchB_;
  BYTE level_ = 4;
  ZRefPtr<IZSingleReltn> material_;
  ZRefPtr<IZSingleReltn> reference_;
  GUID key_ = {};
  ZRefPtr<IZCategoryReltn> categoryReltn_;
};
