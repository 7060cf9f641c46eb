// The parameters of one object, in ascending order of their definition GUIDs; one reference each.
// Parameters are added between BeginAdd and EndAdd. A change of one is reported to the array, and
// by the array to the object that owns it.
#pragma once

#include "platform/core/IZObject.h"

#include <list>

class ZParaArray;
struct IZDMObject;
struct IZDatabase;
struct IZDefinitionMgr;
struct IZParameter;
struct IZProperty;
struct IZPropertyGroupColl;
struct IZReltnVisitor;
struct IZStream;
struct ZDfValue;

struct ZDM_INTERFACE IZParameterArray : IZObject {
  using IZObject::Clone;

  /// Opens a bulk add.
  virtual void BeginAdd() = 0;  // 3
  /// Takes a reference while a bulk add is open; otherwise nothing is added.
  virtual void Add(IZParameter* parameter, LONG reserved) = 0;  // 4
  /// Merges what was added, and restores the order.
  virtual void EndAdd() = 0;     // 5
  virtual void RemoveAll() = 0;  // 6
  virtual bool IsEmpty() = 0;    // 7
  virtual LONG GetCount() = 0;   // 8
  /// Borrowed; null outside the bounds.
  virtual IZParameter* GetAt(LONG index) = 0;  // 9
  /// False when there is no such parameter.
  virtual bool RemoveAt(LONG index) = 0;                      // 10
  virtual bool RemoveByGUID(const GUID& definitionGUID) = 0;  // 11
  virtual bool Remove(IZParameter* parameter) = 0;            // 12
  /// Borrowed; null if none and for GUID_UNSET.
  virtual IZParameter* GetParameter(const GUID& definitionGUID) = 0;  // 13

  // Property sheets.

  /// Appends a group for each definition index, in the order in which their names were registered.
  virtual void BuildPropertyGroups(LONG context, IZPropertyGroupColl* groups) = 0;  // 14
  /// Offer the property to each parameter until one has handled it. True.
  virtual bool FillProperties(LONG context, IZProperty* property) = 0;                   // 15
  virtual bool ApplyProperties(LONG context, IZProperty* property, ULONG reserved) = 0;  // 16

  // By definition GUID: false, and nothing changes, for GUID_UNSET and when there is none.

  virtual bool GetParamDouble(const GUID* definitionGUID, double* out) = 0;          // 17
  virtual bool SetParamDouble(const GUID* definitionGUID, double value) = 0;         // 18
  virtual bool GetParamLong(const GUID* definitionGUID, LONG* out) = 0;              // 19
  virtual bool SetParamLong(const GUID* definitionGUID, LONG value) = 0;             // 20
  virtual bool GetParamString(const GUID* definitionGUID, BSTR* out) = 0;            // 21
  virtual bool SetParamString(const GUID* definitionGUID, const OLECHAR* text) = 0;  // 22
  virtual bool GetParamBool(const GUID* definitionGUID, bool* out) = 0;              // 23
  virtual bool SetParamBool(const GUID* definitionGUID, bool value) = 0;             // 24
  /// Copies of all parameters in the same order, without owner; one reference for the caller.
  virtual void Clone(IZParameterArray** out) = 0;  // 25
  /// `*out`: the object with one reference, or null.
  virtual bool GetParamRelation(const GUID* definitionGUID, IZDMObject** out) = 0;  // 26
  /// The value must be a relation already; no report.
  virtual bool SetParamRelation(const GUID* definitionGUID, IZDMObject* object,
                                bool diffusible) = 0;  // 27
  /// The value itself: no copy, no reference; or null.
  virtual bool GetParamValue(const GUID* definitionGUID, ZDfValue** out) = 0;         // 28
  virtual bool SetParamValue(const GUID* definitionGUID, const ZDfValue* value) = 0;  // 29

  // Make a parameter of the definition that `definitions` has for the GUID (or of none) and add it,
  // which takes an open bulk add. Without a key it stays 0xFFFF.

  virtual void AddDoubleParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                  USHORT key, double value, USHORT flags) = 0;  // 30
  virtual void AddLongParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                USHORT key, LONG value, USHORT flags) = 0;  // 31
  virtual void AddRelationParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                    USHORT key, IZDMObject* object, bool diffusible,
                                    USHORT flags) = 0;  // 32
  virtual void AddStringParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                  const OLECHAR* text, USHORT flags) = 0;  // 33
  virtual void AddBoolParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                bool value, USHORT flags) = 0;  // 34
  virtual void AddValueParameter(IZDefinitionMgr* definitions, const GUID* definitionGUID,
                                 const ZDfValue* value, USHORT flags) = 0;  // 35

  /// True when `other` has an equal parameter for each of this array.
  virtual bool IsEqualTo(IZParameterArray* other) = 0;  // 36
  /// Takes over the values of the parameters that both have.
  /// @param source   an array of parameters, or a manager of parameter objects.
  /// @param changed  receives the definition GUIDs of those that differed; may be null.
  virtual void UpdateFrom(IZObject* source, std::list<GUID>* changed) = 0;  // 37
  virtual void Save(IZStream* stream, IZDatabase* database) = 0;            // 38
  /// Reads into an empty array. Damage throws CAtlException(E_FAIL); what was read stays.
  virtual void Load(IZStream* stream, IZDatabase* database) = 0;  // 39
  /// Offers what each parameter refers to; stops with true at the first true.
  virtual bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) = 0;  // 40
  /// The object that is told of changes; no reference is taken.
  virtual void SetOwner(IZDMObject* object) = 0;  // 41
  virtual IZDMObject* GetOwner() = 0;             // 42
  /// Tells the owner.
  virtual void OnParameterChanged(IZParameter* parameter) = 0;  // 43
  virtual void Reserved44() = 0;                                // 44
  /// The storage itself (borrowed).
  virtual ZParaArray* GetParaArray() = 0;  // 45
  /// Adds copies of the parameters of `other` whose definitions this array lacks.
  virtual void AddMissingFrom(IZParameterArray* other) = 0;  // 46
  /// Takes over the definitions of `other`.
  /// @param keepOwnValues  true: values this array had for them stay.
  virtual void ReplaceFrom(IZParameterArray* other, bool keepOwnValues, LONG reserved) = 0;  // 47
  /// By binary search alone.
  virtual bool IsExist(const GUID& definitionGUID) = 0;  // 48
  /// A new plain parameter, one reference for the caller.
  virtual void CreateParameter(IZParameter** out) = 0;  // 49
};
