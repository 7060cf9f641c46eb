// The manager of a document's own parameters. Its objects are parameters, found by the GUID of
// their definition. The by-GUID operations of IZDMObject read and write them as well; only
// SetParamRelation there is that of a plain object.
#pragma once

#include "zdm/model/IZDMObjMgr.h"

#include <list>

struct IZDefinitionMgr;
struct IZParameter;
struct IZParameterArray;

struct ZDM_INTERFACE IZParameterMgr : IZDMObjMgr {
  /// The first parameter whose definition has that key. False when there is none, for GUID_UNSET
  /// and without `out`.
  /// @param out  one reference for the caller, or null.
  virtual bool FindParameter(const GUID* definitionGUID, IZParameter** out) = 0;  // 184
  /// A new array of copies of all parameters; one reference for the caller.
  virtual void ExportParameters(IZParameterArray** out) = 0;  // 185
  /// Makes the parameter's value a relation to `object`. False when there is no such parameter.
  virtual bool SetManagedParamRelation(const GUID* definitionGUID, IZDMObject* object,
                                       bool diffusible) = 0;  // 186

  // Make a parameter of the definition that `definitions` has for the GUID (or of none) and add it
  // with a registering AddTail. Without a key it stays 0xFFFF.

  virtual void AddDoubleParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                  USHORT key, double value, USHORT flags) = 0;  // 187
  virtual void AddLongParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                USHORT key, LONG value, USHORT flags) = 0;  // 188
  virtual void AddRelationParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                    USHORT key, IZDMObject* object, bool diffusible,
                                    USHORT flags) = 0;  // 189
  virtual void AddStringParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                  const OLECHAR* text, USHORT flags) = 0;  // 190
  virtual void AddBoolParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                bool value, USHORT flags) = 0;  // 191
  virtual void AddValueParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                 const ZDfValue* value, USHORT flags) = 0;  // 192

  /// True when `other` has an equal parameter for each of the manager's.
  virtual bool IsEqualTo(IZParameterArray* other) = 0;  // 193
  /// Takes over the values of the parameters that both have.
  /// @param source   an array of parameters, or a manager of parameter objects.
  /// @param changed  receives the definition GUIDs of those that differed; may be null.
  virtual void UpdateFrom(IZObject* source, std::list<GUID>* changed) = 0;  // 194
  virtual bool HasParameter(const GUID* definitionGUID) = 0;                // 195
};
