// The property: every class of properties derives from it and changes what differs. T is IZProperty
// or an interface derived from it. A class that keeps more than the record below overrides
// CopyFrom; few override Save and Load as well.
#pragma once

#include "zdm/framework/IZObjectImpl.h"
#include "zdm/properties/IZProperty.h"
#include "zdm/properties/PropertyRecord.h"
#include "zdm/relations/ZDfValue.h"

#include <memory>

template <class T>
class IZPropertyImpl : public IZObjectImpl<T> {
 public:
  /// A new object of this one's class that has copied from it; null when the factory cannot make
  /// it.
  IZObject* Clone() override;

  void GetName(BSTR* out) override { *out = zdm::CopyOfName(record_.name); }
  void SetName(const OLECHAR* name) override { record_.name = zdm::Bstr(name); }
  void GetDisplayName(BSTR* out) override { *out = zdm::CopyOfName(record_.displayName); }
  void SetDisplayName(const OLECHAR* name) override { record_.displayName = zdm::Bstr(name); }
  GUID* GetGUID(GUID* out) override;
  void SetGUID(const GUID& guid) override { record_.guid = guid; }
  ULONG GetExtra2() override { return record_.extra2; }
  void SetExtra2(ULONG value) override { record_.extra2 = value; }
  void GetVariant(VARIANT* out) override { record_.value.CopyTo(out); }
  void SetVariant(const VARIANT& value) override { record_.value = zdm::Variant(value); }
  ULONG GetExtra1() override { return record_.extra1; }
  void SetExtra1(ULONG value) override { record_.extra1 = value; }
  ULONG GetExtra3() override { return record_.extra3; }
  void SetExtra3(ULONG value) override { record_.extra3 = value; }
  bool IsReadOnly() override { return record_.Has(Record::kReadOnly); }
  void SetReadOnly(bool flag) override { record_.Set(Record::kReadOnly, flag); }
  bool IsValueUniform() override { return record_.Has(Record::kUniform); }
  void SetValueUniform(bool flag) override { record_.Set(Record::kUniform, flag); }
  void CopyFrom(IZProperty* source) override { TakeFrom(source); }
  bool MergeWith(IZProperty* other) override;
  void ResetValue() override;
  void Reserved24() override {}
  USHORT GetExtra4() override { return record_.extra4; }
  void SetExtra4(USHORT value) override { record_.extra4 = value; }

  void SetRange(double minimum, double maximum, bool includeMinimum, bool includeMaximum) override;
  void GetRange(double* minimum, double* maximum, bool* includeMinimum,
                bool* includeMaximum) override;
  bool IsInRange(double value) override { return record_.IsInRange(value); }
  void SetIntRange(LONG minimum, LONG maximum, bool includeMinimum, bool includeMaximum) override;
  void GetIntRange(LONG* minimum, LONG* maximum, bool* includeMinimum,
                   bool* includeMaximum) override;
  bool IsInIntRange(LONG value) override { return record_.IsInIntRange(value); }

  bool IsFlag40() override { return record_.Has(Record::kFlag40); }
  void SetFlag40(bool flag) override { record_.Set(Record::kFlag40, flag); }
  SHORT GetShort() override { return Holds(VT_I2) ? record_.value.Get().iVal : SHORT{-1}; }
  void SetShort(SHORT value) override;
  double GetDouble() override { return Holds(VT_R8) ? record_.value.Get().dblVal : 0.0; }
  void SetDouble(double value) override { record_.value = zdm::Variant::FromDouble(value); }
  void GetString(BSTR* out) override;
  void SetString(const OLECHAR* text) override { record_.value = zdm::Variant::FromText(text); }
  ULONG GetType() override { return record_.type; }
  void SetType(ULONG type) override { record_.type = type; }
  ULONG GetULong() override { return Holds(VT_UI4) ? record_.value.Get().ulVal : 0; }
  void SetULong(ULONG value) override;
  LONG GetLong() override { return Holds(VT_I4) ? record_.value.Get().lVal : -1; }
  void SetLong(LONG value) override { record_.value = zdm::Variant::FromLong(value); }
  bool GetBool() override { return Holds(VT_BOOL) && record_.value.Get().boolVal != 0; }
  void SetBool(bool value) override { record_.value = zdm::Variant::FromBool(value); }
  ZDfValue* GetObject() override { return object_.get(); }
  void SetObject(const ZDfValue* object) override;

  bool IsFlag20() override { return record_.Has(Record::kFlag20); }
  void SetFlag20(bool flag) override { record_.Set(Record::kFlag20, flag); }
  bool IsFlag02() override { return record_.Has(Record::kFlag02); }
  void SetFlag02(bool flag) override { record_.Set(Record::kFlag02, flag); }
  bool IsLinked() override { return record_.Has(Record::kLinked); }
  void SetLinked(bool flag) override { record_.Set(Record::kLinked, flag); }
  void Save(IZStream* stream) override { record_.Save(stream); }
  void Load(IZStream* stream) override { record_.Load(stream); }
  void* Reserved59() override { return nullptr; }
  void Reserved60() override {}
  bool HasGUID(const GUID& guid) override { return guid == record_.guid; }

 protected:
  using Record = zdm::PropertyRecord;

  /// What CopyFrom promises. False when there was nothing to copy; `source` is otherwise of this
  /// object's class.
  bool TakeFrom(IZProperty* source);
  bool Holds(VARTYPE type) const { return record_.value.type() == type; }

  Record record_;

 private:
  struct Ended {
    void operator()(ZDfValue* value) const { value->Release(); }
  };

  void SetEnds(bool includeMinimum, bool includeMaximum);
  void GetEnds(bool* includeMinimum, bool* includeMaximum) const;

  std::unique_ptr<ZDfValue, Ended> object_;
};

#include "zdm/properties/IZPropertyImpl.inl"

// One instantiation for everybody. Inline members do not leave a DLL, so there each module has its
// own.
#if !defined(_WIN32)
extern template class ZDM_API IZPropertyImpl<IZProperty>;
#endif
