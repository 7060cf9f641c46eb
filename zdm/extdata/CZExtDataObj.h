// An extended-data item that holds one value of one type. It owns a string, and one reference of a
// collection or an object. Stream form: above Save in CZExtDataObj.cpp.
#pragma once

#include "zdm/extdata/ExtDataNamed.h"
#include "zdm/extdata/ExtDataType.h"
#include "zdm/extdata/IZExtDataAccess.h"
#include "zdm/module/ClassTable.h"

class ZDM_API CZExtDataObj : public zdm::ExtDataNamed<IZExtDataAccess> {
  ZDM_OBJECT(CZExtDataObj)
 public:
  CZExtDataObj() = default;
  CZExtDataObj(const CZExtDataObj&) = delete;
  CZExtDataObj& operator=(const CZExtDataObj&) = delete;
  ~CZExtDataObj() override { Replace(zdm::kExtNone, {}); }

  // Its own operation, after getVersion.
  virtual bool IsDumpRef() { return false; }

  /// Takes the name, and from an item with a value that value too: a copy of a string, the same
  /// collection or object. Null and the item itself change nothing.
  void CopyFrom(IZExtData* source) override;
  /// Damage leaves the item as it was, unless items of a nested collection could be read: then it
  /// holds those.
  void Load(IZStream* stream, IZDatabase* database) override;
  void Save(IZStream* stream, IZDatabase* database) override;

  LONG GetByte(BYTE* out) override { return Get(zdm::kExtByte, &Value::byte, out); }
  LONG SetByte(BYTE value) override { return Set(zdm::kExtByte, &Value::byte, value); }
  LONG SetShort(SHORT value) override { return Set(zdm::kExtShort, &Value::int16, value); }
  LONG GetShort(SHORT* out) override { return Get(zdm::kExtShort, &Value::int16, out); }
  LONG SetLong(LONG value) override { return Set(zdm::kExtLong, &Value::int32, value); }
  LONG GetLong(LONG* out) override { return Get(zdm::kExtLong, &Value::int32, out); }
  LONG SetULong(ULONG value) override { return Set(zdm::kExtULong, &Value::uint32, value); }
  LONG GetULong(ULONG* out) override { return Get(zdm::kExtULong, &Value::uint32, out); }
  LONG SetDouble(double value) override { return Set(zdm::kExtDouble, &Value::float64, value); }
  LONG GetDouble(double* out) override { return Get(zdm::kExtDouble, &Value::float64, out); }
  LONG SetString(const OLECHAR* text) override;
  LONG GetString(BSTR* out) override;
  LONG SetBool(bool value) override { return Set(zdm::kExtBool, &Value::flag, value); }
  LONG GetBool(bool* out) override { return Get(zdm::kExtBool, &Value::flag, out); }
  LONG SetCollection(IZExtDataCollection* value) override;
  LONG GetCollection(IZExtDataCollection** out) override {
    return Get(zdm::kExtCollection, &Value::collection, out);
  }
  LONG SetObject(IZDMObject* value) override;
  LONG GetObject(IZDMObject** out) override { return Get(zdm::kExtObject, &Value::object, out); }
  LONG SetVariant(const tagZVARIANT* value) override;
  LONG GetVariant(tagZVARIANT* out) override;
  LONG SetFloat(float value) override { return Set(zdm::kExtFloat, &Value::float32, value); }
  LONG GetFloat(float* out) override { return Get(zdm::kExtFloat, &Value::float32, out); }
  LONG GetType(BYTE* out) override;

 private:
  union Value {
    ULONGLONG bits;
    BYTE byte;
    SHORT int16;
    LONG int32;
    ULONG uint32;
    float float32;
    double float64;
    BSTR text;  // owned
    bool flag;
    IZExtDataCollection* collection;  // one reference
    IZDMObject* object;               // one reference; null when it was read
  };
  static_assert(sizeof(Value) == 8);

  template <class T>
  LONG Get(zdm::ExtDataType type, T Value::*field, T* out) const {
    if (out == nullptr) return E_INVALIDARG;
    if (type_ != type) return E_FAIL;
    *out = value_.*field;
    return S_OK;
  }
  template <class T>
  LONG Set(zdm::ExtDataType type, T Value::*field, T value) {
    Value taken = {};
    taken.*field = value;
    Replace(type, taken);
    return S_OK;
  }
  void Replace(zdm::ExtDataType type, Value value);
  void CopyValue(IZExtDataAccess& source);
  void LoadCollection(zdm::Bstr name, IZStream* stream, IZDatabase* database);

  Value value_ = {};
  zdm::ExtDataType type_ = zdm::kExtNone;
};
