// IStorage and IEnumSTATSTG in the system's order of operations, and the doors to compound files.
#pragma once

#include "platform/Export.h"
#include "platform/ole/portable/Guid.h"
#include "platform/ole/portable/Stream.h"
#include "platform/ole/portable/Types.h"

using SNB = LPOLESTR*;

struct ZDM_INTERFACE IEnumSTATSTG : IUnknown {
  /// Fills up to `count` entries; each name belongs to the caller (CoTaskMemFree). S_FALSE when
  /// there were fewer. `fetched` may be null only if `count` is 1.
  virtual HRESULT STDMETHODCALLTYPE Next(ULONG count, STATSTG* entries, ULONG* fetched) = 0;
  virtual HRESULT STDMETHODCALLTYPE Skip(ULONG count) = 0;
  virtual HRESULT STDMETHODCALLTYPE Reset() = 0;
  virtual HRESULT STDMETHODCALLTYPE Clone(IEnumSTATSTG** out) = 0;
};

struct ZDM_INTERFACE IStorage : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE CreateStream(LPCOLESTR name, DWORD mode, DWORD reserved1,
                                                 DWORD reserved2, IStream** out) = 0;
  virtual HRESULT STDMETHODCALLTYPE OpenStream(LPCOLESTR name, void* reserved1, DWORD mode,
                                               DWORD reserved2, IStream** out) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateStorage(LPCOLESTR name, DWORD mode, DWORD reserved1,
                                                  DWORD reserved2, IStorage** out) = 0;
  virtual HRESULT STDMETHODCALLTYPE OpenStorage(LPCOLESTR name, IStorage* priority, DWORD mode,
                                                SNB exclude, DWORD reserved, IStorage** out) = 0;
  virtual HRESULT STDMETHODCALLTYPE CopyTo(DWORD excludedCount, const IID* excluded, SNB exclude,
                                           IStorage* target) = 0;
  virtual HRESULT STDMETHODCALLTYPE MoveElementTo(LPCOLESTR name, IStorage* target,
                                                  LPCOLESTR newName, DWORD flags) = 0;
  virtual HRESULT STDMETHODCALLTYPE Commit(DWORD flags) = 0;
  virtual HRESULT STDMETHODCALLTYPE Revert() = 0;
  /// Elements in directory order: shorter names first, then upper-case code units.
  virtual HRESULT STDMETHODCALLTYPE EnumElements(DWORD reserved1, void* reserved2, DWORD reserved3,
                                                 IEnumSTATSTG** out) = 0;
  virtual HRESULT STDMETHODCALLTYPE DestroyElement(LPCOLESTR name) = 0;
  virtual HRESULT STDMETHODCALLTYPE RenameElement(LPCOLESTR oldName, LPCOLESTR newName) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetElementTimes(LPCOLESTR name, const FILETIME* created,
                                                    const FILETIME* accessed,
                                                    const FILETIME* modified) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetClass(REFCLSID clsid) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetStateBits(DWORD bits, DWORD mask) = 0;
  virtual HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD flags) = 0;
};

inline constexpr IID IID_IStorage = {0x0000000B, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_IEnumSTATSTG = {0x0000000D, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

/// Makes a compound file at `path` (UTF-16; UTF-8 on disk). The file appears, whole, when the root
/// is committed or released for the last time. Without STGM_CREATE an existing file is
/// STG_E_FILEALREADYEXISTS. A null `path` makes a storage in memory that is dropped at the end.
ZDM_API HRESULT StgCreateDocfile(LPCOLESTR path, DWORD mode, DWORD reserved, IStorage** out);

/// Opens a compound file after it passed zdm::CheckCompoundFile (STG_E_DOCFILECORRUPT otherwise;
/// STG_E_FILEALREADYEXISTS for a file that is no compound file).
ZDM_API HRESULT StgOpenStorage(LPCOLESTR path, IStorage* priority, DWORD mode, SNB exclude,
                               DWORD reserved, IStorage** out);

/// S_OK if the file starts like a compound file, S_FALSE if not.
ZDM_API HRESULT StgIsStorageFile(LPCOLESTR path);
