#include "zdm/extdata/CZExtDataObj.h"

#include "platform/core/IZStream.h"
#include "zdm/extdata/CZExtDataCollection.h"
#include "zdm/model/IZDMObject.h"

#include <utility>

ZDM_OBJECT_BODY(CZExtDataObj)

namespace {

/// Bytes of a value that is stored as it is; 0 for other types.
ULONG SizeOf(zdm::ExtDataType type) {
  switch (type) {
    case zdm::kExtByte:
    case zdm::kExtBool:
      return 1;
    case zdm::kExtShort:
      return 2;
    case zdm::kExtFloat:
    case zdm::kExtLong:
    case zdm::kExtULong:
      return 4;
    case zdm::kExtDouble:
      return 8;
    default:
      return 0;
  }
}

/// What a getter delivers; a value of another type is 0.
template <class T>
T Read(IZExtDataAccess& item, LONG (IZExtDataAccess::*get)(T*)) {
  T value = {};
  (item.*get)(&value);
  return value;
}

}  // namespace

/// Takes over what `value` owns. The old value goes last, as its release may run any code, also
/// end this item.
void CZExtDataObj::Replace(zdm::ExtDataType type, Value value) {
  const zdm::ExtDataType oldType = std::exchange(type_, type);
  const Value old = std::exchange(value_, value);
  if (oldType == zdm::kExtString) SysFreeString(old.text);
  if (oldType == zdm::kExtCollection && old.collection != nullptr) old.collection->Release();
  if (oldType == zdm::kExtObject && old.object != nullptr) old.object->Release();
}

LONG CZExtDataObj::SetString(const OLECHAR* text) {
  return Set(zdm::kExtString, &Value::text, zdm::Bstr(text).Detach());
}

LONG CZExtDataObj::GetString(BSTR* out) {
  BSTR text = nullptr;
  const LONG result = Get(zdm::kExtString, &Value::text, out == nullptr ? nullptr : &text);
  if (result == S_OK) *out = zdm::Bstr::CopyOf(text).Detach();
  return result;
}

LONG CZExtDataObj::SetCollection(IZExtDataCollection* value) {
  if (value == nullptr) return E_INVALIDARG;
  value->AddRef();
  return Set(zdm::kExtCollection, &Value::collection, value);
}

LONG CZExtDataObj::SetObject(IZDMObject* value) {
  if (value == nullptr) return E_INVALIDARG;
  value->AddRef();
  return Set(zdm::kExtObject, &Value::object, value);
}

LONG CZExtDataObj::SetVariant(const tagZVARIANT* value) {
  if (value == nullptr) return E_INVALIDARG;
  switch (value->vt) {
    case VT_I2:
      return SetShort(value->value.iVal);
    case VT_I4:
      return SetLong(value->value.lVal);
    case VT_R4:
      return SetFloat(value->value.fltVal);
    case VT_UI4:
      return SetULong(value->value.ulVal);
    default:
      return S_OK;
  }
}

LONG CZExtDataObj::GetVariant(tagZVARIANT* out) {
  if (out == nullptr) return E_INVALIDARG;
  switch (out->vt) {
    case VT_I2:
      out->value.iVal = Read(*this, &IZExtDataAccess::GetShort);
      break;
    case VT_I4:
      out->value.lVal = Read(*this, &IZExtDataAccess::GetLong);
      break;
    case VT_R4:
      out->value.fltVal = Read(*this, &IZExtDataAccess::GetFloat);
      break;
    case VT_UI4:
      out->value.ulVal = Read(*this, &IZExtDataAccess::GetULong);
      break;
    default:
      break;
  }
  return S_OK;
}

LONG CZExtDataObj::GetType(BYTE* out) {
  if (out == nullptr) return E_INVALIDARG;
  *out = type_;
  return S_OK;
}

void CZExtDataObj::CopyFrom(IZExtData* source) {
  if (source == nullptr || source == static_cast<IZExtData*>(this)) return;
  // Held, as it may hang on the value that goes.
  const ZRefPtr<IZExtData> held = source;
  zdm::Bstr name;
  source->GetName(name.Out());
  name_ = std::move(name);
  if (auto* access = zdm::ViewAs<IZExtDataAccess>(source)) CopyValue(*access);
}

void CZExtDataObj::CopyValue(IZExtDataAccess& source) {
  switch (Read(source, &IZExtDataAccess::GetType)) {
    case zdm::kExtByte:
      SetByte(Read(source, &IZExtDataAccess::GetByte));
      break;
    case zdm::kExtShort:
      SetShort(Read(source, &IZExtDataAccess::GetShort));
      break;
    case zdm::kExtFloat:
      SetFloat(Read(source, &IZExtDataAccess::GetFloat));
      break;
    case zdm::kExtLong:
      SetLong(Read(source, &IZExtDataAccess::GetLong));
      break;
    case zdm::kExtULong:
      SetULong(Read(source, &IZExtDataAccess::GetULong));
      break;
    case zdm::kExtDouble:
      SetDouble(Read(source, &IZExtDataAccess::GetDouble));
      break;
    case zdm::kExtString:
      Set(zdm::kExtString, &Value::text, Read(source, &IZExtDataAccess::GetString));
      break;
    case zdm::kExtBool:
      SetBool(Read(source, &IZExtDataAccess::GetBool));
      break;
    case zdm::kExtCollection:
      SetCollection(Read(source, &IZExtDataAccess::GetCollection));
      break;
    case zdm::kExtObject:
      // One that was read refers to nothing.
      if (SetObject(Read(source, &IZExtDataAccess::GetObject)) != S_OK)
        Replace(zdm::kExtObject, {});
      break;
    default:
      Replace(zdm::kExtNone, {});
      break;
  }
}

// Item record, little-endian.
//   size  field
//      1  type
//      ?  name, a stream string
//      ?  value: a number in its width, a bool in one byte; a stream string; the record of a nested
//         collection; nothing for an item without value and for an object
void CZExtDataObj::Save(IZStream* stream, IZDatabase* database) {
  const BYTE type = type_;
  stream->Write(&type, 1);
  stream->WriteBSTR(name_.Get());
  if (type_ == zdm::kExtString) {
    stream->WriteBSTR(value_.text);
  } else if (type_ == zdm::kExtCollection) {
    const ZRefPtr<IZExtDataCollection> items = value_.collection;  // saving may run any code
    items->Save(stream, database);
  } else {
    stream->Write(&value_, SizeOf(type_));
  }
}

void CZExtDataObj::Load(IZStream* stream, IZDatabase* database) {
  BYTE code = 0;
  stream->Read(&code, 1);
  if (code > zdm::kExtObject) throw CAtlException(E_FAIL);
  const auto type = static_cast<zdm::ExtDataType>(code);
  zdm::Bstr name;
  stream->ReadBSTR(name.Out());
  if (type == zdm::kExtCollection) {
    LoadCollection(std::move(name), stream, database);
    return;
  }
  Value value = {};
  if (type == zdm::kExtString) {
    stream->ReadBSTR(&value.text);
  } else if (type == zdm::kExtBool) {
    value.flag = stream->ReadFlag();
  } else {
    stream->Read(&value, SizeOf(type));
  }
  name_ = std::move(name);
  Replace(type, value);
}

void CZExtDataObj::LoadCollection(zdm::Bstr name, IZStream* stream, IZDatabase* database) {
  const auto items = zdm::NewOf<IZExtDataCollection, CZExtDataCollection>();
  const auto take = [&] {
    name_ = std::move(name);
    SetCollection(items);
  };
  try {
    items->Load(stream, database);
  } catch (...) {
    if (!items->IsEmpty()) take();
    throw;
  }
  take();
}
