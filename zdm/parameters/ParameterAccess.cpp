// What an array does for one parameter by its definition GUID, and for property sheets.
#include "platform/ole/CAtlException.h"
#include "zdm/model/IZDMObject.h"
#include "zdm/model/IZDefinition.h"
#include "zdm/model/IZDefinitionMgr.h"
#include "zdm/parameters/IZParameterArrayImpl.h"
#include "zdm/parameters/PropertyGroups.h"
#include "zdm/properties/IZProperty.h"
#include "zdm/relations/IZSingleReltn.h"
#include "zdm/relations/ZDfValues.h"

#include <vector>

/// Borrowed; null for null, GUID_UNSET and when there is none.
IZParameter* IZParameterArrayImpl::Find(const GUID* definitionGUID) {
  return definitionGUID != nullptr ? GetParameter(*definitionGUID) : nullptr;
}

bool IZParameterArrayImpl::GetParamDouble(const GUID* definitionGUID, double* out) {
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  *out = parameter->GetDouble();
  return true;
}

bool IZParameterArrayImpl::SetParamDouble(const GUID* definitionGUID, double value) {
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  parameter->SetDouble(value);
  return true;
}

bool IZParameterArrayImpl::GetParamLong(const GUID* definitionGUID, LONG* out) {
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  *out = parameter->GetLong();
  return true;
}

bool IZParameterArrayImpl::SetParamLong(const GUID* definitionGUID, LONG value) {
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  parameter->SetLong(value);
  return true;
}

bool IZParameterArrayImpl::GetParamString(const GUID* definitionGUID, BSTR* out) {
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  parameter->GetString(out);
  return true;
}

bool IZParameterArrayImpl::SetParamString(const GUID* definitionGUID, const OLECHAR* text) {
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  parameter->SetString(text);
  return true;
}

bool IZParameterArrayImpl::GetParamBool(const GUID* definitionGUID, bool* out) {
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  *out = parameter->GetBool();
  return true;
}

bool IZParameterArrayImpl::SetParamBool(const GUID* definitionGUID, bool value) {
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  parameter->SetBool(value);
  return true;
}

bool IZParameterArrayImpl::GetParamRelation(const GUID* definitionGUID, IZDMObject** out) {
  *out = nullptr;
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  *out = parameter->GetRelation();
  if (*out != nullptr) (*out)->AddRef();
  return true;
}

bool IZParameterArrayImpl::SetParamRelation(const GUID* definitionGUID, IZDMObject* object,
                                            bool diffusible) {
  IZParameter* const parameter = Find(definitionGUID);
  auto* value = parameter != nullptr ? dynamic_cast<ZDfRelation*>(parameter->GetValue()) : nullptr;
  if (value == nullptr || value->Value == nullptr) return false;
  value->Value->SetReltnDiffusible(diffusible);
  value->Value->SetReltnObj(object);
  return true;
}

bool IZParameterArrayImpl::GetParamValue(const GUID* definitionGUID, ZDfValue** out) {
  *out = nullptr;
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  *out = parameter->GetValue();
  return true;
}

bool IZParameterArrayImpl::SetParamValue(const GUID* definitionGUID, const ZDfValue* value) {
  IZParameter* const parameter = Find(definitionGUID);
  if (parameter == nullptr) return false;
  parameter->SetValue(value);
  return true;
}

// Typed parameters.

template <class Set>
void IZParameterArrayImpl::AddTyped(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                    std::optional<USHORT> key, USHORT flags, const Set& set) {
  IZDefinition* definition = nullptr;
  if (definitions != nullptr && definitionGUID != nullptr) {
    definition = definitions->FindDefinition(definitionGUID);
  }
  ZRefPtr<IZParameter> parameter;
  CreateParameter(parameter.Out());
  parameter->SetDefinition(definition);
  if (key) parameter->SetKey(*key);
  parameter->SetFlags(flags);
  set(*parameter);
  Add(parameter, 0);
}

void IZParameterArrayImpl::AddDoubleParameter(IZDefinitionMgr* definitions,
                                              const GUID* definitionGUID, USHORT key, double value,
                                              USHORT flags) {
  AddTyped(definitions, definitionGUID, key, flags,
           [&](IZParameter& parameter) { parameter.SetDouble(value); });
}

void IZParameterArrayImpl::AddLongParameter(IZDefinitionMgr* definitions,
                                            const GUID* definitionGUID, USHORT key, LONG value,
                                            USHORT flags) {
  AddTyped(definitions, definitionGUID, key, flags,
           [&](IZParameter& parameter) { parameter.SetLong(value); });
}

void IZParameterArrayImpl::AddRelationParameter(IZDefinitionMgr* definitions,
                                                const GUID* definitionGUID, USHORT key,
                                                IZDMObject* object, bool diffusible, USHORT flags) {
  AddTyped(definitions, definitionGUID, key, flags,
           [&](IZParameter& parameter) { parameter.SetRelation(object, diffusible); });
}

void IZParameterArrayImpl::AddStringParameter(IZDefinitionMgr* definitions,
                                              const GUID* definitionGUID, const OLECHAR* text,
                                              USHORT flags) {
  AddTyped(definitions, definitionGUID, {}, flags,
           [&](IZParameter& parameter) { parameter.SetString(text); });
}

void IZParameterArrayImpl::AddBoolParameter(IZDefinitionMgr* definitions,
                                            const GUID* definitionGUID, bool value, USHORT flags) {
  AddTyped(definitions, definitionGUID, {}, flags,
           [&](IZParameter& parameter) { parameter.SetBool(value); });
}

void IZParameterArrayImpl::AddValueParameter(IZDefinitionMgr* definitions,
                                             const GUID* definitionGUID, const ZDfValue* value,
                                             USHORT flags) {
  AddTyped(definitions, definitionGUID, {}, flags,
           [&](IZParameter& parameter) { parameter.SetValue(value); });
}

// Property sheets.

void IZParameterArrayImpl::BuildPropertyGroups(LONG, IZPropertyGroupColl* groups) {
  std::vector<IZParameter*> parameters;
  for (LONG i = 0; i < storage_.GetCount(); ++i) parameters.push_back(storage_.at(i));
  zdm::BuildGroups(parameters, zdm::GroupOrder::kRegistration, groups);
}

/// Offers the property to one parameter after the other until one has handled it; first to that of
/// its definition, as the others pass it on. What a property does may let go of a parameter, or of
/// the whole array.
template <class Offer>
void IZParameterArrayImpl::OfferProperty(IZProperty* property, const Offer& offer) {
  if (property == nullptr) return;
  const ZRefPtr<IZParameterArray> held = this;
  bool handled = false;
  GUID guid;
  const LONG index = storage_.FirstOf(*property->GetGUID(&guid));
  const ZRefPtr<IZParameter> first = index >= 0 ? storage_.at(index) : nullptr;
  if (first != nullptr) offer(*first, &handled);
  for (LONG i = 0; i < storage_.GetCount() && !handled; ++i) {
    const ZRefPtr<IZParameter> parameter = storage_.at(i);
    if (parameter != first) offer(*parameter, &handled);
  }
}

bool IZParameterArrayImpl::FillProperties(LONG context, IZProperty* property) {
  OfferProperty(property, [&](IZParameter& parameter, bool* handled) {
    parameter.FillProperty(context, property, handled);
  });
  return true;
}

bool IZParameterArrayImpl::ApplyProperties(LONG context, IZProperty* property, ULONG reserved) {
  OfferProperty(property, [&](IZParameter& parameter, bool* handled) {
    parameter.ApplyProperty(context, property, reserved, handled);
  });
  return true;
}
