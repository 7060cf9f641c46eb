// A category of objects: a name and a number, display values for projection and section, its parent
// category and its members, as relations. Results are borrowed unless stated.
#pragma once

#include "zdm/model/IZDMObject.h"

struct IZCategoryReltn;
struct IZDMObjColl;
struct IZDispAttrib;
struct ZGiHatchData;

struct ZDM_INTERFACE IZCategory : IZDMObject {
  using IZDMObject::GetMaterial;

  virtual bool IsFlag8000() = 0;           // 130
  virtual void SetFlag8000(bool set) = 0;  // 131
  virtual bool IsFlag4000() = 0;           // 132
  /// Sets it; nothing clears it but SetFlags.
  virtual void SetFlag4000() = 0;          // 133
  virtual bool IsFlag2000() = 0;           // 134
  virtual void SetFlag2000(bool set) = 0;  // 135
  virtual bool IsFlag1000() = 0;           // 136
  virtual void SetFlag1000(bool set) = 0;  // 137
  /// -1.
  virtual LONG CategoryReserved138() = 0;  // 138
  virtual void CategoryReserved139() = 0;  // 139
  virtual bool IsFlag0800() = 0;           // 140
  virtual void SetFlag0800(bool set) = 0;  // 141
  /// Display values; null until the first set. Set copies the values of `source`.
  virtual IZDispAttrib* GetProjectionDispAttrib() = 0;             // 142
  virtual void SetProjectionDispAttrib(IZDispAttrib* source) = 0;  // 143
  virtual ZGiHatchData* GetHatchA() = 0;                           // 144
  virtual void SetHatchA(const ZGiHatchData* source) = 0;          // 145
  virtual IZDispAttrib* GetSectionDispAttrib() = 0;                // 146
  virtual void SetSectionDispAttrib(IZDispAttrib* source) = 0;     // 147
  virtual ZGiHatchData* GetHatchB() = 0;                           // 148
  virtual void SetHatchB(const ZGiHatchData* source) = 0;          // 149
  /// Takes a copy; null clears. Throws CAtlException(E_OUTOFMEMORY) without memory.
  virtual void SetCategoryName(const OLECHAR* name) = 0;  // 150
  /// Null without a parent; setting null removes it.
  virtual IZCategory* GetParentCategory() = 0;           // 151
  virtual void SetParentCategory(IZObject* parent) = 0;  // 152
  virtual bool IsCategoryVisible() = 0;                  // 153
  virtual void SetCategoryVisible(bool visible) = 0;     // 154
  virtual void SetNumber(ULONG number) = 0;              // 155
  /// Members are objects that the category itself refers to; those that are in it refer to it.
  virtual void AddMember(IZDMObject* object) = 0;  // 156
  /// A new collection of the members, count 0.
  virtual IZDMObjColl* GetMembers() = 0;  // 157
  virtual LONG GetMemberCount() = 0;      // 158
  /// The members' relations; may be null.
  virtual IZReltnColl* GetMemberColl() = 0;             // 159
  virtual void SetMemberColl(IZObject* relations) = 0;  // 160
  /// A new relation to this category, count 0.
  virtual IZCategoryReltn* CreateCategoryReltn() = 0;  // 161
  virtual void SetFlags(USHORT flags) = 0;             // 162
  virtual USHORT GetFlags() = 0;                       // 163
  virtual void SetFlag0100(bool set) = 0;              // 164
  virtual bool IsFlag0100() = 0;                       // 165
  virtual void SetFlag0200(bool set) = 0;              // 166
  virtual bool IsFlag0200() = 0;                       // 167
  virtual void SetLevel(BYTE level) = 0;               // 168
  virtual BYTE GetLevel() = 0;                         // 169
  virtual void SetFlag0080(bool set) = 0;              // 170
  virtual bool IsFlag0080() = 0;                       // 171
  /// Null without a material; setting null removes it.
  virtual IZGiMaterial* GetMaterial() = 0;           // 172
  virtual void SetMaterial(IZObject* material) = 0;  // 173
  virtual IZDMObject* GetReference() = 0;            // 174
  virtual void SetReference(IZObject* object) = 0;   // 175
  /// The key itself, for reading and writing.
  virtual GUID* GetKey() = 0;                // 176
  virtual void SetKey(const GUID* key) = 0;  // 177
};
