// What every persistent object is built on. T is IZDMObject or an interface derived from it.
// Answers all operations of IZDMObject as described there; a class overrides what it does
// differently, and of the operations added here CloneInto, LoadOwnData and SaveOwnData where it has
// data of its own. The class must be registered with the factory to be cloned. Attachments are made
// on first use, through the factory; while a class of theirs is not registered, the operation that
// wants it changes nothing, and a stream that holds its data is damaged. Stream form: above Save in
// IZDMObjectImpl.inl.
#pragma once

#include "platform/core/ChangeWatch.h"
#include "zdm/extdata/IZExtDataMgr.h"
#include "zdm/framework/IZObjectImpl.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/host/IZTreeData.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/model/StoredParts.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/relations/IZDisplayImpl.h"
#include "zdm/relations/IZReltnColl.h"

namespace zdm {
constexpr LONG kNewObjectBit = 12;  // status bit of every new object
constexpr LONG kMarkedBit = 14;     // which of a device's two selection operations takes the object
constexpr LONGLONG kNewObjectOptions = static_cast<LONGLONG>(0xF230FA2000000000);
}  // namespace zdm

template <class T>
class IZDMObjectImpl : public IZDisplayImpl<IZObjectImpl<T>>,
                       public zdm::StoredParts,
                       public zdm::InBlocks<zdm::BlockKind::kObject> {
 public:
  using T::GetMaterial;  // forms of its own that an interface may add
  using zdm::InBlocks<zdm::BlockKind::kObject>::operator new;
  using zdm::InBlocks<zdm::BlockKind::kObject>::operator delete;

  /// A record of its own with status bit 12 and the option mask of a new object; no owner.
  IZDMObjectImpl();
  IZDMObjectImpl(const IZDMObjectImpl&) = delete;
  IZDMObjectImpl& operator=(const IZDMObjectImpl&) = delete;
  ~IZDMObjectImpl() override;

  /// A copy with count 0; null when the factory cannot make one.
  IZObject* Clone() override;

  // IZDisplay: an object without geometry.
  void DrawVariant1(IZGiDevice* device, SubID* sub, GiContext* context) override;
  void DrawVariant2(IZGiDevice* device, SubID* sub, GiContext* context) override;
  void DrawVariant3(IZGiDevice* device, SubID* sub, GiContext* context) override;
  void DrawVariant4(IZGiDevice* device, SubID* sub, GiContext* context) override;
  void DrawVariant5(IZGiDevice* device, SubID* sub, GiContext* context) override;
  void Select(IZGiDevice* device) override;
  /// The empty box: minima 1e20, maxima -1e20.
  void GetBox(double* box, SubID* sub, GiContext* context) override;
  bool JudgeStatus(LONG bit) override;

  // IZRelation. Status word and tag are those of a relation; neither stored nor copied.
  void CopyFrom(IZRelation* other) override;
  void Update(IZUpdater*, GiContext*) override {}
  void SetReltnStatus(LONG bits) override { reltnStatus_ |= static_cast<ULONG>(bits); }
  LONG GetReltnStatus() override { return static_cast<LONG>(reltnStatus_); }
  void ClearReltnStatus(LONG bits) override { reltnStatus_ &= ~static_cast<ULONG>(bits); }
  bool JudgeReltnStatus(LONG mask) override;
  bool IsReltnDiffusible() override { return this->JudgeReltnStatus(ZRS_DIFFUSIBLE); }
  void SetReltnDiffusible(bool diffusible) override;
  void Load(IZStream* stream, IZDatabase* database) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  bool IsValid() override { return this->JudgeReltnStatus(ZRS_VALID); }
  void SetReltnTag(LONG tag) override { reltnTag_ = tag; }
  LONG GetReltnTag() override { return reltnTag_; }
  void AssertValid(IZDatabase*) override {}
  /// False; an object's references are walked by VisitReferences.
  bool Accept(IZDMObject*, IZDMObject*, IZReltnVisitor*) override { return false; }
  bool JudgeSame(IZRelation* other) override;

  // IZDMObject.
  bool IsObjectValid() override;
  bool IsObjectAttached() override;
  void SetStatus(LONG bit) override;
  void ClearStatus(LONG bit) override;
  void CloneObject(IZDMObject** out) override { this->CloneInto(out, zdm::kCopyMode); }
  void CopyFrom(IZDMObject* source, LONG mode) override;
  bool JudgeSame(IZDMObject* other) override;
  BYTE GetTypeByte() override { return 1; }
  void SetOID(OID* oid, bool raw) override;
  void SetID(ULONG id) override;
  OID* GetOID() override { return oid_; }
  ULONG GetID() override;
  void SetOwnerOID(OID* oid) override;
  void SetOwnerID(ULONG id) override;
  OID* GetOwnerOID() override { return ownerOid_; }
  ULONG GetOwnerID() override;
  void SetOwner(IZDMObject* owner) override;
  IZDMObject* GetOwner() override;
  IZDatabase* GetDatabase() override;
  bool VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) override;
  void SetObjectValid(bool valid) override;
  BYTE GetDMType() override { return 1; }
  void AddOptionAllowed(LONGLONG mask) override;
  void ClearOptionAllowed(LONGLONG mask) override;
  bool JudgeOptionAllowed(LONGLONG mask) override;
  void SetOptionAllowed(LONGLONG mask) override;
  LONGLONG GetOptionAllowed() override;
  void BuildPropertyGroups(LONG, IZPropertyGroupColl*) override {}
  bool FillProperties(LONG, IZProperty*) override { return true; }
  bool ApplyProperties(LONG, IZProperty*, ULONG) override { return true; }
  void Reserved91(LONG first, LONG second, IZObject** out) override;
  bool Reserved92() override { return true; }
  void GetDisplayName(BSTR* out) override { this->GetName(out); }
  ULONG GetNumber() override { return 0; }
  IZCategory* GetCategory() override { return nullptr; }
  void Reserved96() override {}
  IZGiMaterial* GetCategoryMaterial() override;
  IZExtDataMgr* GetExtDataMgr() override { return extDataMgr_; }
  IZExtData* GetExtData(GUID key, const OLECHAR* name) override;
  void SetExtData(GUID key, IZObject* item) override;
  void RemoveExtData(GUID key, IZObject* item) override;
  void ClearExtData() override { extDataMgr_.Reset(); }
  void AddRelation(IZObject* relation) override;
  IZReltnColl* GetReltnColl() override { return reltnColl_; }
  void GetParameterArray(IZParameterArray** out) override;
  IZParameterArray* PeekParameterArray() override { return paramArray_; }
  void SetParameterArray(IZParameterArray* array, bool clone) override;
  IZParameter* GetParameter(const GUID& definitionGUID) override;
  void Reserved109() override {}
  void AddParameter(IZParameter* parameter) override;
  void ClearParameters() override { HoldParameterArray(nullptr); }
  void OnParametersChanged() override {}
  bool GetParamDouble(const GUID* definitionGUID, double* out) override;
  bool SetParamDouble(const GUID* definitionGUID, double value) override;
  bool GetParamLong(const GUID* definitionGUID, LONG* out) override;
  bool SetParamLong(const GUID* definitionGUID, LONG value) override;
  bool GetParamString(const GUID* definitionGUID, BSTR* out) override;
  bool SetParamString(const GUID* definitionGUID, const OLECHAR* text) override;
  bool GetParamValue(const GUID* definitionGUID, ZDfValue** out) override;
  bool SetParamValue(const GUID* definitionGUID, const ZDfValue* value) override;
  bool GetParamRelation(const GUID* definitionGUID, IZDMObject** out) override;
  bool SetParamRelation(const GUID* definitionGUID, IZDMObject* object, bool diffusible) override;
  bool GetParamBool(const GUID* definitionGUID, bool* out) override;
  bool SetParamBool(const GUID* definitionGUID, bool value) override;
  bool GetMaterial(const GUID* key, IZGiMaterial** out) override;
  void Reserved126() override {}
  void Reserved127() override {}
  void SetTreeData(IZObject* data) override { treeData_ = data; }
  IZTreeData* GetTreeData() override { return treeData_; }

  // Operations of the template itself; they follow those of T in this order.

  /// As CloneInto; hands out the copy's IZRelation view.
  virtual void CloneRelation(IZRelation** out);
  /// Makes a copy through the factory, see CopyFrom. It carries the same ID value and owner.
  /// @param out  one reference for the caller; null when the class cannot be created.
  virtual void CloneInto(IZDMObject** out, LONG mode);
  virtual void LoadExtData(IZStream* stream, IZDatabase* database);
  /// What the class stores at the end of the body.
  virtual void LoadOwnData(IZStream*, IZDatabase*) {}
  virtual void SaveExtData(IZStream* stream, IZDatabase* database);
  virtual void SaveOwnData(IZStream*, IZDatabase*) {}
  /// Holds the argument's IZExtDataMgr view. E_INVALIDARG for null.
  virtual LONG SetExtDataMgr(IZObject* manager);
  virtual void SaveHead(IZStream* stream, IZDatabase* database);
  void LoadHead(IZStream* stream, IZDatabase* database) override;
  virtual void SaveBody(IZStream* stream, IZDatabase* database);
  /// A part that cannot be read throws CAtlException(E_FAIL). What the object held in its place is
  /// kept; where it held nothing, what was read so far stays.
  virtual void LoadBody(IZStream* stream, IZDatabase* database);
  virtual void SaveTail(IZStream*, IZDatabase*) {}
  void LoadTail(IZStream*, IZDatabase*) override {}
  virtual void WriteHeader(IZStream* stream);
  /// Takes the option mask; the rest was used by whoever made the object.
  virtual void ReadHeader(IZStream* stream);
  virtual bool ReservedQuery16() { return true; }

 protected:
  /// What stands in a body before the class's own data.
  void LoadAttachments(IZStream* stream, IZDatabase* database);

  OID* oid_;                              // owned; an ID table that lists it keeps it
  OID* ownerOid_ = nullptr;               // held, so that an owner may end first
  ZRefPtr<IZExtDataMgr> extDataMgr_;      // null until first used
  ZRefPtr<IZReltnColl> reltnColl_;        // null until a relation is added or loaded
  ZRefPtr<IZParameterArray> paramArray_;  // null until first used; its owner is this object
  ZRefPtr<IZTreeData> treeData_;
  ULONG reltnStatus_ = ZRS_VALID;
  LONG reltnTag_ = -1;

 private:
  IZParameterArray* QueryParameterArray();
  void HoldParameterArray(IZParameterArray* array);
  void LoadRelations(IZStream* stream, IZDatabase* database);
  void LoadParameters(IZStream* stream, IZDatabase* database);
};

#include "zdm/model/IZDMObjectAttachments.inl"
#include "zdm/model/IZDMObjectImpl.inl"
#include "zdm/model/IZDMObjectStream.inl"

// One instantiation for everybody. Inline members do not leave a DLL, so there each module has its
// own.
#if !defined(_WIN32)
extern template class ZDM_API IZDMObjectImpl<IZDMObject>;
#endif
