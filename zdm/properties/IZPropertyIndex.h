// A choice among numbered entries. The value is the number of the entry chosen, of 16 bits.
// Labels handed out are copies for the caller (SysFreeString) and may be null.
// GetLong and GetExtra3 answer the value as an unsigned number, 0xFFFFFFFF when there is none;
// SetLong and SetExtra3 store the low 16 bits.
#pragma once

#include "zdm/properties/IZProperty.h"

struct ZDM_INTERFACE IZPropertyIndex : IZProperty {
  virtual ULONG GetEntryCount() = 0;  // 62
  /// Label of the first entry of that number; false and null if none.
  virtual bool GetEntryText(ULONG index, BSTR* label) = 0;       // 63
  virtual void AddEntry(ULONG index, const OLECHAR* label) = 0;  // 64
  // The one cursor over the entries. GetFirstEntry throws CAtlException(E_FAIL) when there are
  // none; GetNextEntry answers false past the last one, and until the next GetFirstEntry.
  virtual void GetFirstEntry(ULONG* index, BSTR* label) = 0;  // 65
  virtual bool GetNextEntry(ULONG* index, BSTR* label) = 0;   // 66
  virtual void RemoveAllEntries() = 0;                        // 67
};
