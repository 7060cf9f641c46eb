// What every parameter is built on. T is IZParameter or an interface derived from it. Answers all
// operations as IZParameter.h describes them.
// Definition and linked parameter: plain relations of the host to them. Value: one of its own.
// Array: known without a reference; it may end first. Stream form: above SaveBody in
// IZParameterImpl.inl.
#pragma once

#include "platform/core/ChangeWatch.h"
#include "zdm/framework/IZObjectImpl.h"
#include "zdm/framework/WeakView.h"
#include "zdm/parameters/HeldValue.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/parameters/ParameterLinks.h"

template <class T>
class IZParameterImpl : public IZObjectImpl<T>, public zdm::ParameterLinks {
 public:
  GUID* GetDefinitionGUID(GUID* out) override;
  IZDMObject* GetElement() override;
  void SetElement(IZObject* element) override;
  const GUID* GetGUID() override;
  void SetGUID(const GUID& value) override { value_.Make<ZDfGUID>().Value = value; }
  ULONGLONG GetUlongPtr() override { return PlainValue<ZDfUlongPtr>(); }
  void SetUlongPtr(ULONGLONG value) override { value_.Make<ZDfUlongPtr>().Value = value; }
  double GetDouble() override;
  void SetDouble(double value) override { SetPlainValue<ZDfDouble>(value); }
  IZDMObject* GetRelation() override;
  void SetRelation(IZDMObject* object, bool diffusible) override;
  LONG GetLong() override { return PlainValue<ZDfLong>(); }
  void SetLong(LONG value) override { SetPlainValue<ZDfLong>(value); }
  void GetString(BSTR* out) override;
  void SetString(const OLECHAR* text) override;
  ZDfValue* GetValue() override { return value_.Get(); }
  void SetValue(const ZDfValue* value) override;
  bool GetBool() override { return PlainValue<ZDfBool>(); }
  void SetBool(bool value) override { SetPlainValue<ZDfBool>(value); }
  ULONG GetPropertyType() override;
  bool IsFlag02() override { return Has(kFlag02); }
  void SetFlag02(bool set) override { Set(kFlag02, set); }
  IZDefinition* GetDefinition() override;
  void SetDefinition(IZObject* definition) override;
  USHORT GetKey() override { return key_; }
  void SetKey(USHORT key) override { key_ = key; }
  void CloneParameter(IZParameter** out) override;
  void CopyFrom(IZParameter* source) override;
  LONG GetDefinitionIndex() override;
  void GetName(BSTR* out) override;
  bool FillProperty(LONG context, IZProperty* property, bool* handled) override;
  bool ApplyProperty(LONG context, IZProperty* property, ULONG reserved, bool* handled) override;
  void AddPropertyTo(IZPropertyColl* collection) override;
  USHORT GetFlags() override { return flags_; }
  void SetFlags(USHORT flags) override { flags_ = flags; }
  IZDMObject* GetLinkedObject() override { return link_.GetObject(); }
  void SetLinkedObject(IZDMObject* source) override;
  bool IsEqual(IZParameter* other) override;
  bool IsReadOnly() override { return Has(kReadOnly); }
  void SetReadOnly(bool set) override { Set(kReadOnly, set); }
  bool IsFlag08() override { return Has(kFlag08); }
  void SetFlag08(bool set) override { Set(kFlag08, set); }
  void Save(IZStream* stream, IZDatabase* database) override { this->SaveBody(stream, database); }
  void Load(IZStream* stream, IZDatabase* database) override { this->LoadBody(stream, database); }
  bool IsFlag10() override { return Has(kFlag10); }
  void SetFlag10(bool set) override { Set(kFlag10, set); }
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override;
  void SetOwner(IZParameterArray* array) override;
  IZParameterArray* GetOwner() override { return array_.Get(); }
  bool IsFlag20() override { return Has(kFlag20); }
  void SetFlag20(bool set) override { Set(kFlag20, set); }

 protected:
  // Operations of the template itself; they follow those of T in this order.

  /// Shows the parameter's own value in a property.
  /// @param type     the type code by which the value is converted.
  /// @param handled  becomes true for the codes that are converted; stays as it is for others.
  virtual void GetPropertyValue(ULONG type, IZProperty* property, bool* handled);
  /// What cannot be read throws CAtlException(E_FAIL); what was read before it stays. A value of an
  /// unknown type is reported in a message box, and the parameter is without a value then.
  virtual void LoadBody(IZStream* stream, IZDatabase* database);
  virtual void SaveBody(IZStream* stream, IZDatabase* database);

 private:
  enum Flag : USHORT {
    kFlag02 = 0x02,
    kReadOnly = 0x04,
    kFlag08 = 0x08,
    kFlag10 = 0x10,
    kFlag20 = 0x20
  };

  bool Has(USHORT bit) const { return (flags_ & bit) != 0; }
  void Set(USHORT bit, bool set) {
    flags_ = static_cast<USHORT>(set ? flags_ | bit : flags_ & ~bit);
  }
  template <class V>
  auto PlainValue() const {
    const V* value = value_.As<V>();
    return value != nullptr ? value->Value : decltype(value->Value){};
  }
  template <class V, class Plain>
  void SetPlainValue(Plain value) {
    value_.Make<V>().Value = value;
    Report();
  }
  void Report();
  bool Serves(IZProperty* property);

  USHORT flags_ = kFlag02 | kFlag08;
  USHORT key_ = 0xFFFF;
  zdm::HeldValue value_;
  zdm::WeakView<IZParameterArray> array_;
};

#include "zdm/parameters/IZParameterImpl.inl"

// One instantiation for everybody. Inline members do not leave a DLL, so there each module has its
// own.
#if !defined(_WIN32)
extern template class ZDM_API IZParameterImpl<IZParameter>;
extern template class ZDM_API IZParameterImpl<IZDMParameter>;
#endif
