// A definition; see IZDefinition.h. What it refers to may be deleted, and neither deduction nor
// self-containment goes through it.
// Property: one reference, also where it is shared. Stream form: above SaveOwnData in
// CZDefinition.cpp.
#pragma once

#include "zdm/model/IZDMObjectImpl.h"
#include "zdm/model/IZDefinition.h"
#include "zdm/module/ClassTable.h"

#include <memory>

class ZDM_API CZDefinition : public IZObjectImpl<IZDefinition>, public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(CZDefinition)
 public:
  using IZDMObjectImpl::AddRef;
  using IZDMObjectImpl::CopyFrom;
  using IZDMObjectImpl::JudgeSame;
  using IZDMObjectImpl::Release;

  CZDefinition();
  ~CZDefinition() override;

  virtual bool IsDumpRef() { return false; }

  IZObject* Clone() override { return IZDMObjectImpl::Clone(); }

  // IZDefinition.
  bool GetFlag() override { return (flags_ & kFlag) != 0; }
  void SetFlag(bool set) override { flags_ = set ? flags_ | kFlag : flags_ & ~kFlag; }
  /// Of the object as well.
  void GetName(BSTR* out) override;
  LONG GetIndex() override { return index_; }
  void SetIndex(LONG index) override { index_ = index; }
  GUID* GetKey(GUID* out) override;
  void SetProperty(IZProperty* property, bool share) override;
  IZProperty* GetProperty() override { return property_; }
  ULONG PropertyCall() override;
  void AddPropertyCopyTo(IZPropertyColl* coll) override;
  ULONG GetFlags() override { return flags_; }
  void SetFlags(ULONG flags) override { flags_ = flags; }
  IZDefinitionMgr* GetDefinitionMgr() override;
  void GetIndexName(BSTR* out) override;
  ULONG GetKind() override { return kind_; }
  void SetKind(ULONG kind) override { kind_ = kind; }
  const ZDefinitionExtra* GetExtra() override { return extra_.get(); }
  void SetExtra(const ZDefinitionExtra* extra) override;
  bool MatchKey(const GUID& key) override;

  // IZDMObject.
  /// Asks the property to.
  void AssertValid(IZDatabase* database) override;
  /// From a definition also its numbers, a copy of its property and its extra data.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  /// True for any definition of the same key.
  bool JudgeSame(IZDMObject* other) override;
  /// A property of a class that is not known throws CAtlException(E_FAIL), and so does one that
  /// cannot be read; the present one stays then.
  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;

 private:
  static constexpr ULONG kFlag = 1;

  ULONG flags_ = 0;
  LONG index_ = -1;
  ZRefPtr<IZProperty> property_;
  ULONG kind_ = 3;
  std::unique_ptr<ZDefinitionExtra> extra_;
};
