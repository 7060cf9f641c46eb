#pragma once

#include "platform/core/IZStream.h"
#include "platform/system/Output.h"
#include "platform/system/Text.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/host/HostClasses.h"
#include "zdm/model/IZDefinition.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/PropertyBridge.h"
#include "zdm/properties/GUID_UNSET.h"
#include "zdm/properties/IZProperty.h"
#include "zdm/relations/IZReltnVisitor.h"

#include <string>
#include <utility>

namespace zdm {

#pragma pack(push, 1)
/// What a parameter record begins with.
struct ParameterHead {
  USHORT flags;
  USHORT key;
  BYTE hasDefinition;
};
#pragma pack(pop)
static_assert(sizeof(ParameterHead) == 5);

}  // namespace zdm

template <class T>
void IZParameterImpl<T>::Report() {
  if (IZParameterArray* array = array_.Get()) array->OnParameterChanged(this);
}

template <class T>
void IZParameterImpl<T>::SetOwner(IZParameterArray* array) {
  if (array != array_.Get()) array_ = zdm::WeakView(array);
}

// The definition.

template <class T>
IZDefinition* IZParameterImpl<T>::GetDefinition() {
  return zdm::ViewAs<IZDefinition>(definition_.GetObject());
}

template <class T>
void IZParameterImpl<T>::SetDefinition(IZObject* definition) {
  definition_.SetObject(zdm::ViewAs<IZDMObject>(definition), this->kDefinitionDiffusible);
  zdm::ChangeWatch::Changed(*this);
}

template <class T>
GUID* IZParameterImpl<T>::GetDefinitionGUID(GUID* out) {
  IZDefinition* definition = this->GetDefinition();
  if (definition != nullptr) return definition->GetKey(out);
  *out = GUID_UNSET;
  return out;
}

template <class T>
ULONG IZParameterImpl<T>::GetPropertyType() {
  IZDefinition* definition = this->GetDefinition();
  return definition != nullptr ? definition->PropertyCall() : 0;
}

template <class T>
LONG IZParameterImpl<T>::GetDefinitionIndex() {
  IZDefinition* definition = this->GetDefinition();
  return definition != nullptr ? definition->GetIndex() : -1;
}

template <class T>
void IZParameterImpl<T>::GetName(BSTR* out) {
  if (IZDefinition* definition = this->GetDefinition()) {
    definition->GetName(out);
  } else {
    *out = zdm::Bstr(OLESTR("Unknown")).Detach();
  }
}

template <class T>
void IZParameterImpl<T>::AddPropertyTo(IZPropertyColl* collection) {
  if (IZDefinition* definition = this->GetDefinition()) definition->AddPropertyCopyTo(collection);
}

// The link.

template <class T>
void IZParameterImpl<T>::SetLinkedObject(IZDMObject* source) {
  if (source != nullptr) {
    link_.SetObject(source, this->kLinkDiffusible);
  } else {
    link_.Reset();
  }
  zdm::ChangeWatch::Changed(*this);
}

template <class T>
double IZParameterImpl<T>::GetDouble() {
  if (!this->HasLink()) return PlainValue<ZDfDouble>();
  const zdm::LinkWalk<IZParameter> walk(*this, [](IZParameter&) { return true; });
  return walk.GetEnd() != nullptr ? walk.GetEnd()->GetDouble() : PlainValue<ZDfDouble>();
}

// The value.

template <class T>
IZDMObject* IZParameterImpl<T>::GetElement() {
  const auto* element = value_.As<ZDfElement>();
  if (element == nullptr) return nullptr;
  auto copy = zdm::CloneAs<IZDMObject>(element->Value);
  if (copy == nullptr) return nullptr;
  IZDMObject* result = copy.Detach();
  result->ForgetReference();
  return result;
}

template <class T>
void IZParameterImpl<T>::SetElement(IZObject* element) {
  auto copy = zdm::CloneAs<IZDMObject>(element);
  value_.Make<ZDfElement>().Value = std::move(copy);
  Report();
}

template <class T>
const GUID* IZParameterImpl<T>::GetGUID() {
  static constexpr GUID kNone = {};
  const auto* guid = value_.As<ZDfGUID>();
  return guid != nullptr ? &guid->Value : &kNone;
}

template <class T>
IZDMObject* IZParameterImpl<T>::GetRelation() {
  const auto* relation = value_.As<ZDfRelation>();
  return relation != nullptr && relation->Value != nullptr ? relation->Value->GetReltnObject()
                                                           : nullptr;
}

template <class T>
void IZParameterImpl<T>::SetRelation(IZDMObject* object, bool diffusible) {
  auto& relation = value_.Make<ZDfRelation>();
  if (relation.Value == nullptr) {
    relation.Value = zdm::CreateAs<IZSingleReltn>(zdm::kPlainReltnClass);
  }
  if (relation.Value != nullptr) {
    relation.Value->SetReltnObj(object);
    relation.Value->SetReltnDiffusible(diffusible);
  }
  zdm::ChangeWatch::Changed(*this);
  Report();
}

template <class T>
void IZParameterImpl<T>::GetString(BSTR* out) {
  *out = nullptr;
  if (const auto* text = value_.As<ZDfCComBSTR>()) text->Value.CopyTo(out);
}

template <class T>
void IZParameterImpl<T>::SetString(const OLECHAR* text) {
  auto& held = value_.Make<ZDfCComBSTR>().Value;
  if (text == nullptr || text != held.Get()) {
    const zdm::Bstr former = std::exchange(held, zdm::Bstr());  // `text` may lie in it
    held = zdm::Bstr(text);
  }
  Report();
}

template <class T>
void IZParameterImpl<T>::SetValue(const ZDfValue* value) {
  if (value == nullptr) {
    value_.Attach(nullptr);
  } else if (value != value_.Get()) {
    value_.CopyFrom(*value);
    zdm::ChangeWatch::Changed(*this);
    Report();
  }
}

// Copying and comparing.

template <class T>
void IZParameterImpl<T>::CloneParameter(IZParameter** out) {
  *out = nullptr;
  auto copy = zdm::NewOf<IZParameter, CZParameter>();
  copy->CopyFrom(this);
  *out = copy.Detach();
}

template <class T>
void IZParameterImpl<T>::CopyFrom(IZParameter* source) {
  if (source == nullptr) return;
  flags_ = source->GetFlags();
  key_ = source->GetKey();
  this->SetDefinition(source->GetDefinition());
  this->SetValue(source->GetValue());
}

template <class T>
bool IZParameterImpl<T>::IsEqual(IZParameter* other) {
  if (other == nullptr) return false;
  if ((this->GetDefinition() == nullptr) != (other->GetDefinition() == nullptr)) return false;
  if (key_ != other->GetKey()) return false;
  ZDfValue* others = other->GetValue();
  if (others == nullptr || value_.IsNull()) return others == value_.Get();
  return flags_ == other->GetFlags() && others->JudgeSame(value_.Get());
}

// Property sheets.

/// True for a property of the parameter's definition, if there is a value to show.
template <class T>
bool IZParameterImpl<T>::Serves(IZProperty* property) {
  IZDefinition* definition = this->GetDefinition();
  if (property == nullptr || definition == nullptr || value_.IsNull()) return false;
  GUID key;
  GUID shown;
  return *definition->GetKey(&key) == *property->GetGUID(&shown);
}

template <class T>
bool IZParameterImpl<T>::FillProperty(LONG context, IZProperty* property, bool* handled) {
  *handled = false;
  if (!Serves(property)) return false;
  const zdm::LinkWalk<IZDMParameter> walk(
      *this, [](IZDMParameter& parameter) { return parameter.GetValue() != nullptr; });
  IZDMParameter* source = walk.GetEnd();
  if (source != nullptr) {
    const zdm::LentDefinition lent(*source, *this);
    source->FillProperty(context, property, handled);
  } else {
    this->GetPropertyValue(this->GetPropertyType(), property, handled);
  }
  property->SetReadOnly(this->IsReadOnly());
  property->SetFlag02(this->IsFlag10());
  property->SetLinked(source != nullptr);
  return true;
}

template <class T>
void IZParameterImpl<T>::GetPropertyValue(ULONG type, IZProperty* property, bool* handled) {
  zdm::ShowValue(type, value_.Get(), *property, *handled);
}

template <class T>
bool IZParameterImpl<T>::ApplyProperty(LONG, IZProperty* property, ULONG, bool* handled) {
  *handled = false;
  if (!Serves(property)) return false;
  zdm::TakeValue(this->GetPropertyType(), value_, *property, *handled);
  zdm::ChangeWatch::Changed(*this);
  return true;
}

template <class T>
bool IZParameterImpl<T>::Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) {
  zdm::ChangeWatch::Watch(*this);
  if (link_.Accept(root, owner, visitor)) return true;
  if (definition_.Accept(root, owner, visitor)) return true;
  return !value_.IsNull() && value_.Get()->Accept(root, owner, visitor);
}

// Parameter record.
//   size      field
//      2      flags
//      2      key
//      1      1 when a definition relation follows, else 0
//   variable  its own record
//      1      1 when a link relation follows, else 0
//   variable  its own record
//      1      type code of the value, 0 without one
//   variable  the value's own record
//
// Of all records there are most of these, so what stands side by side is written together.
template <class T>
void IZParameterImpl<T>::SaveBody(IZStream* stream, IZDatabase* database) {
  const ZRefPtr<IZSingleReltn> definition = definition_.GetReltn();
  const zdm::ParameterHead head = {flags_, key_, definition != nullptr};
  stream->Write(&head, sizeof(head));
  if (definition != nullptr) definition->Save(stream, database);
  const bool hasLink = link_.GetReltn() != nullptr;
  if (hasLink) link_.Save(stream, database);
  const BYTE type = value_.IsNull() ? BYTE{0} : BYTE{value_.Get()->GetType()};
  if (hasLink) {
    stream->Write(&type, sizeof(type));
  } else {
    const auto noLinkAndType = static_cast<USHORT>(type << 8);
    stream->Write(&noLinkAndType, sizeof(noLinkAndType));
  }
  if (!value_.IsNull()) value_.Get()->Save(stream, database);
}

template <class T>
void IZParameterImpl<T>::LoadBody(IZStream* stream, IZDatabase* database) {
  USHORT words[2];
  stream->Read(words, sizeof(words));
  flags_ = words[0];
  key_ = words[1];
  definition_.Load(stream, database, this->kDefinitionDiffusible);
  link_.Load(stream, database, this->kLinkDiffusible);
  BYTE type;
  stream->Read(&type, sizeof(type));
  value_.Attach(ZDfValueRxClass::CreateZDfValue(type));
  if (!value_.IsNull()) {
    value_.Get()->Load(stream, database);
    zdm::ChangeWatch::Changed(*this);
  } else {
    const zdm::WideString number = zdm::FromUtf8(std::to_string(type));
    zdm::ShowMessage(number.c_str(), number.c_str(), MB_OK);
  }
}
