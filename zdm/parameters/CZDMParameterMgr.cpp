#include "zdm/parameters/CZDMParameterMgr.h"

#include "zdm/framework/CreateAs.h"
#include "zdm/model/IZDefinition.h"
#include "zdm/model/IZDefinitionMgr.h"
#include "zdm/parameters/IZDMParameter.h"
#include "zdm/parameters/IZParameterArray.h"
#include "zdm/parameters/ParameterSource.h"
#include "zdm/parameters/PropertyGroups.h"
#include "zdm/properties/GUID_UNSET.h"

ZDM_OBJECT_BODY(CZDMParameterMgr)

void CZDMParameterMgr::CopyFrom(IZDMObject* source, LONG) {
  IZDMObjMgrImpl::CopyFrom(source, zdm::kCopyMode);
}

// Finding.

/// The first parameter for which `visit` answers true (borrowed), or null. What it is called with
/// may change the list.
template <class Visit>
IZParameter* CZDMParameterMgr::FindFirst(Visit visit) {
  for (CZList::Walk walk(*this); const auto* object = walk.Next();) {
    auto* parameter = zdm::ViewAs<IZParameter>(object->Get());
    if (parameter != nullptr && visit(*parameter)) return parameter;
  }
  return nullptr;
}

IZParameter* CZDMParameterMgr::FindByDefinition(const GUID* definitionGUID) {
  if (definitionGUID == nullptr || *definitionGUID == GUID_UNSET) return nullptr;
  return FindFirst([&](IZParameter& parameter) {
    GUID key;
    return *parameter.GetDefinitionGUID(&key) == *definitionGUID;
  });
}

bool CZDMParameterMgr::FindParameter(const GUID* definitionGUID, IZParameter** out) {
  if (out == nullptr) return false;
  *out = FindByDefinition(definitionGUID);
  if (*out != nullptr) (*out)->AddRef();
  return *out != nullptr;
}

bool CZDMParameterMgr::HasParameter(const GUID* definitionGUID) {
  return FindByDefinition(definitionGUID) != nullptr;
}

// By definition.

/// Calls `use` with the parameter of the definition; false when there is none.
template <class Use>
bool CZDMParameterMgr::With(const GUID* definitionGUID, Use use) {
  const ZRefPtr<IZParameter> parameter = FindByDefinition(definitionGUID);
  if (parameter != nullptr) use(*parameter.Get());
  return parameter != nullptr;
}

bool CZDMParameterMgr::GetParamDouble(const GUID* definitionGUID, double* out) {
  return With(definitionGUID, [&](IZParameter& parameter) { *out = parameter.GetDouble(); });
}

bool CZDMParameterMgr::SetParamDouble(const GUID* definitionGUID, double value) {
  return With(definitionGUID, [&](IZParameter& parameter) { parameter.SetDouble(value); });
}

bool CZDMParameterMgr::GetParamLong(const GUID* definitionGUID, LONG* out) {
  return With(definitionGUID, [&](IZParameter& parameter) { *out = parameter.GetLong(); });
}

bool CZDMParameterMgr::SetParamLong(const GUID* definitionGUID, LONG value) {
  return With(definitionGUID, [&](IZParameter& parameter) { parameter.SetLong(value); });
}

bool CZDMParameterMgr::GetParamString(const GUID* definitionGUID, BSTR* out) {
  return With(definitionGUID, [&](IZParameter& parameter) { parameter.GetString(out); });
}

bool CZDMParameterMgr::SetParamString(const GUID* definitionGUID, const OLECHAR* text) {
  return With(definitionGUID, [&](IZParameter& parameter) { parameter.SetString(text); });
}

bool CZDMParameterMgr::GetParamValue(const GUID* definitionGUID, ZDfValue** out) {
  return With(definitionGUID, [&](IZParameter& parameter) { *out = parameter.GetValue(); });
}

bool CZDMParameterMgr::SetParamValue(const GUID* definitionGUID, const ZDfValue* value) {
  return With(definitionGUID, [&](IZParameter& parameter) { parameter.SetValue(value); });
}

bool CZDMParameterMgr::GetParamRelation(const GUID* definitionGUID, IZDMObject** out) {
  return With(definitionGUID, [&](IZParameter& parameter) {
    *out = ZRefPtr<IZDMObject>(parameter.GetRelation()).Detach();
  });
}

bool CZDMParameterMgr::SetManagedParamRelation(const GUID* definitionGUID, IZDMObject* object,
                                               bool diffusible) {
  return With(definitionGUID,
              [&](IZParameter& parameter) { parameter.SetRelation(object, diffusible); });
}

bool CZDMParameterMgr::GetParamBool(const GUID* definitionGUID, bool* out) {
  return With(definitionGUID, [&](IZParameter& parameter) { *out = parameter.GetBool(); });
}

bool CZDMParameterMgr::SetParamBool(const GUID* definitionGUID, bool value) {
  return With(definitionGUID, [&](IZParameter& parameter) { parameter.SetBool(value); });
}

// Making parameters.

void CZDMParameterMgr::CreateParameter(IZDMParameter** out) {
  *out = zdm::NewOf<IZDMParameter, CZDMParameter>().Detach();
}

/// @param key  null leaves the key that a new parameter has.
template <class Set>
void CZDMParameterMgr::Create(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                              const USHORT* key, USHORT flags, Set set) {
  IZDefinition* definition =
      definitions != nullptr ? definitions->FindDefinition(definitionGUID) : nullptr;
  ZRefPtr<IZDMParameter> parameter;
  CreateParameter(parameter.Out());
  parameter->SetDefinition(definition);
  if (key != nullptr) parameter->SetKey(*key);
  parameter->SetFlags(flags);
  set(*parameter.Get());
  AddTail(parameter.Get());
}

void CZDMParameterMgr::AddDoubleParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                          USHORT key, double value, USHORT flags) {
  Create(definitions, definitionGUID, &key, flags,
         [&](IZParameter& parameter) { parameter.SetDouble(value); });
}

void CZDMParameterMgr::AddLongParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                        USHORT key, LONG value, USHORT flags) {
  Create(definitions, definitionGUID, &key, flags,
         [&](IZParameter& parameter) { parameter.SetLong(value); });
}

void CZDMParameterMgr::AddRelationParameter(IZDefinitionMgr* definitions,
                                            const GUID* definitionGUID, USHORT key,
                                            IZDMObject* object, bool diffusible, USHORT flags) {
  Create(definitions, definitionGUID, &key, flags,
         [&](IZParameter& parameter) { parameter.SetRelation(object, diffusible); });
}

void CZDMParameterMgr::AddStringParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                          const OLECHAR* text, USHORT flags) {
  Create(definitions, definitionGUID, nullptr, flags,
         [&](IZParameter& parameter) { parameter.SetString(text); });
}

void CZDMParameterMgr::AddBoolParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                        bool value, USHORT flags) {
  Create(definitions, definitionGUID, nullptr, flags,
         [&](IZParameter& parameter) { parameter.SetBool(value); });
}

void CZDMParameterMgr::AddValueParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                         const ZDfValue* value, USHORT flags) {
  Create(definitions, definitionGUID, nullptr, flags,
         [&](IZParameter& parameter) { parameter.SetValue(value); });
}

// Between managers and arrays.

void CZDMParameterMgr::ExportParameters(IZParameterArray** out) {
  *out = nullptr;
  auto array = zdm::NewOf<IZParameterArray, CZParameterArray>();
  array->BeginAdd();
  FindFirst([&](IZParameter& parameter) {
    auto copy = zdm::NewOf<IZParameter, CZParameter>();
    copy->CopyFrom(&parameter);
    array->Add(copy, 0);
    return false;
  });
  array->EndAdd();
  *out = array.Detach();
}

bool CZDMParameterMgr::IsEqualTo(IZParameterArray* other) {
  const auto* differing = FindFirst([&](IZParameter& own) {
    GUID key;
    own.GetDefinitionGUID(&key);
    IZParameter* theirs = other != nullptr ? other->GetParameter(key) : nullptr;
    return theirs == nullptr || !theirs->IsEqual(&own);
  });
  return differing == nullptr;
}

void CZDMParameterMgr::UpdateFrom(IZObject* source, std::list<GUID>* changed) {
  if (EqualTo(source)) return;
  zdm::ForEachParameter(source, [&](IZParameter* theirs) {
    GUID key;
    theirs->GetDefinitionGUID(&key);
    With(&key, [&](IZParameter& own) {
      if (changed != nullptr && !own.IsEqual(theirs)) changed->push_back(key);
      own.SetValue(theirs->GetValue());
    });
  });
}

// Property sheets.

void CZDMParameterMgr::BuildPropertyGroups(LONG, IZPropertyGroupColl* groups) {
  std::vector<IZParameter*> parameters;
  FindFirst([&](IZParameter& parameter) {
    parameters.push_back(&parameter);
    return false;
  });
  zdm::BuildGroups(parameters, zdm::GroupOrder::kFirstAppearance, groups);
}

bool CZDMParameterMgr::FillProperties(LONG context, IZProperty* property) {
  FindFirst([&](IZParameter& parameter) {
    bool handled = false;
    parameter.FillProperty(context, property, &handled);
    return handled;
  });
  return true;
}

bool CZDMParameterMgr::ApplyProperties(LONG context, IZProperty* property, ULONG reserved) {
  FindFirst([&](IZParameter& parameter) {
    bool handled = false;
    parameter.ApplyProperty(context, property, reserved, &handled);
    return handled;
  });
  return true;
}
