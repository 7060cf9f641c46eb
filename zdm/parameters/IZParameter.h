// One typed value that an object carries. Name, key GUID and presentation come from a definition,
// which a relation names; a second relation may link the parameter to another one, from which it
// then takes its number and its presentation. Changes are reported to the array that holds it.
#pragma once

#include "platform/core/IZObject.h"

struct IZDMObject;
struct IZDatabase;
struct IZDefinition;
struct IZParameterArray;
struct IZProperty;
struct IZPropertyColl;
struct IZReltnVisitor;
struct IZStream;
struct ZDfValue;

struct ZDM_INTERFACE IZParameter : IZObject {
  /// Writes the definition's key GUID, GUID_UNSET without a definition, and returns `out`.
  virtual GUID* GetDefinitionGUID(GUID* out) = 0;  // 3

  // The value. A getter answers the stored value when it has that type, otherwise 0, false, null or
  // a zero GUID. A setter makes the value one of its type; all report to the array except those for
  // GUIDs and for unsigned numbers.

  /// A clone of the element, its count 0; null without one.
  virtual IZDMObject* GetElement() = 0;  // 4
  /// Stores a clone.
  virtual void SetElement(IZObject* element) = 0;  // 5
  virtual const GUID* GetGUID() = 0;               // 6
  virtual void SetGUID(const GUID& value) = 0;     // 7
  virtual ULONGLONG GetUlongPtr() = 0;             // 8
  virtual void SetUlongPtr(ULONGLONG value) = 0;   // 9
  /// Of a linked parameter, where there is a valid one.
  virtual double GetDouble() = 0;            // 10
  virtual void SetDouble(double value) = 0;  // 11
  /// The object referred to (borrowed), or null.
  virtual IZDMObject* GetRelation() = 0;                              // 12
  virtual void SetRelation(IZDMObject* object, bool diffusible) = 0;  // 13
  virtual LONG GetLong() = 0;                                         // 14
  virtual void SetLong(LONG value) = 0;                               // 15
  /// A copy (SysFreeString by the caller), or null.
  virtual void GetString(BSTR* out) = 0;            // 16
  virtual void SetString(const OLECHAR* text) = 0;  // 17
  /// The value itself (borrowed), or null.
  virtual ZDfValue* GetValue() = 0;  // 18
  /// Stores a clone. Null empties the parameter without a report; the value already held changes
  /// nothing.
  virtual void SetValue(const ZDfValue* value) = 0;  // 19
  virtual bool GetBool() = 0;                        // 20
  virtual void SetBool(bool value) = 0;              // 21
  /// The type code of the definition's property; 0 without one.
  virtual ULONG GetPropertyType() = 0;   // 22
  virtual bool IsFlag02() = 0;           // 23
  virtual void SetFlag02(bool set) = 0;  // 24
  /// Borrowed; null without a definition.
  virtual IZDefinition* GetDefinition() = 0;  // 25
  /// Null, and an object that is no data-model object, leave the definition as it is.
  virtual void SetDefinition(IZObject* definition) = 0;  // 26
  /// A number of the parameter's user; 0xFFFF at first.
  virtual USHORT GetKey() = 0;          // 27
  virtual void SetKey(USHORT key) = 0;  // 28
  /// A plain parameter that copies from this one; one reference for the caller.
  virtual void CloneParameter(IZParameter** out) = 0;  // 29
  /// Takes over flags, key, definition and value; link and array stay.
  virtual void CopyFrom(IZParameter* source) = 0;  // 30
  /// -1 without a definition.
  virtual LONG GetDefinitionIndex() = 0;  // 31
  /// The definition's name, or "Unknown" (SysFreeString by the caller).
  virtual void GetName(BSTR* out) = 0;  // 32
  /// Fills a property of the parameter's definition. False without a value and for another
  /// definition's property; `*handled` says whether the property took the value.
  virtual bool FillProperty(LONG context, IZProperty* property, bool* handled) = 0;  // 33
  /// Takes an edited property back into the value, without a report.
  virtual bool ApplyProperty(LONG context, IZProperty* property, ULONG reserved,
                             bool* handled) = 0;  // 34
  /// Appends a copy of the definition's property.
  virtual void AddPropertyTo(IZPropertyColl* collection) = 0;  // 35
  virtual USHORT GetFlags() = 0;                               // 36
  virtual void SetFlags(USHORT flags) = 0;                     // 37
  /// The parameter linked to (borrowed), or null.
  virtual IZDMObject* GetLinkedObject() = 0;             // 38
  virtual void SetLinkedObject(IZDMObject* source) = 0;  // 39
  /// True when both have a definition or neither has, and keys, flags and values are equal.
  virtual bool IsEqual(IZParameter* other) = 0;                   // 40
  virtual bool IsReadOnly() = 0;                                  // 41
  virtual void SetReadOnly(bool set) = 0;                         // 42
  virtual bool IsFlag08() = 0;                                    // 43
  virtual void SetFlag08(bool set) = 0;                           // 44
  virtual void Save(IZStream* stream, IZDatabase* database) = 0;  // 45
  virtual void Load(IZStream* stream, IZDatabase* database) = 0;  // 46
  virtual bool IsFlag10() = 0;                                    // 47
  virtual void SetFlag10(bool set) = 0;                           // 48
  /// Offers the link, the definition relation and what the value holds; stops with true at the
  /// first true.
  virtual bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) = 0;  // 49
  /// The array that is told of changes; no reference is taken.
  virtual void SetOwner(IZParameterArray* array) = 0;  // 50
  virtual IZParameterArray* GetOwner() = 0;            // 51
  virtual bool IsFlag20() = 0;                         // 52
  virtual void SetFlag20(bool set) = 0;                // 53
};
