// IUnknown, IStream and what belongs to them, in the system's order of operations, with its
// constants and results.
// Names are the system's; where its behaviour leaves a choice, the comment says which one is ours.
#pragma once

#include "platform/Export.h"
#include "platform/ole/portable/Guid.h"
#include "platform/ole/portable/Types.h"

struct FILETIME {
  DWORD dwLowDateTime;
  DWORD dwHighDateTime;
};

/// What Stat and an enumerator answer. `pwcsName` belongs to the caller (CoTaskMemFree); it is null
/// when STATFLAG_NONAME was asked for.
struct STATSTG {
  LPOLESTR pwcsName;
  DWORD type;  // STGTY_…
  ULARGE_INTEGER cbSize;
  FILETIME mtime;
  FILETIME ctime;
  FILETIME atime;
  DWORD grfMode;
  DWORD grfLocksSupported;
  CLSID clsid;
  DWORD grfStateBits;
  DWORD reserved;
};

enum STGTY { STGTY_STORAGE = 1, STGTY_STREAM = 2, STGTY_LOCKBYTES = 3, STGTY_PROPERTY = 4 };
enum STREAM_SEEK { STREAM_SEEK_SET = 0, STREAM_SEEK_CUR = 1, STREAM_SEEK_END = 2 };
#pragma push_macro("LOCK_WRITE")  // of <fcntl.h> on some systems
#undef LOCK_WRITE
enum LOCKTYPE { LOCK_WRITE = 1, LOCK_EXCLUSIVE = 2, LOCK_ONLYONCE = 4 };
#pragma pop_macro("LOCK_WRITE")
enum STATFLAG { STATFLAG_DEFAULT = 0, STATFLAG_NONAME = 1, STATFLAG_NOOPEN = 2 };
enum STGMOVE { STGMOVE_MOVE = 0, STGMOVE_COPY = 1, STGMOVE_SHALLOWCOPY = 2 };
enum STGC {
  STGC_DEFAULT = 0,
  STGC_OVERWRITE = 1,
  STGC_ONLYIFCURRENT = 2,
  STGC_DANGEROUSLYCOMMITMERELYTODISKCACHE = 4,
  STGC_CONSOLIDATE = 8
};

constexpr DWORD STGM_DIRECT = 0x00000000;
constexpr DWORD STGM_TRANSACTED = 0x00010000;
constexpr DWORD STGM_SIMPLE = 0x08000000;
constexpr DWORD STGM_READ = 0x00000000;
constexpr DWORD STGM_WRITE = 0x00000001;
constexpr DWORD STGM_READWRITE = 0x00000002;
constexpr DWORD STGM_SHARE_DENY_NONE = 0x00000040;
constexpr DWORD STGM_SHARE_DENY_READ = 0x00000030;
constexpr DWORD STGM_SHARE_DENY_WRITE = 0x00000020;
constexpr DWORD STGM_SHARE_EXCLUSIVE = 0x00000010;
constexpr DWORD STGM_PRIORITY = 0x00040000;
constexpr DWORD STGM_DELETEONRELEASE = 0x04000000;
constexpr DWORD STGM_NOSCRATCH = 0x00100000;
constexpr DWORD STGM_CREATE = 0x00001000;
constexpr DWORD STGM_CONVERT = 0x00020000;
constexpr DWORD STGM_FAILIFTHERE = 0x00000000;
constexpr DWORD STGM_NOSNAPSHOT = 0x00200000;
constexpr DWORD STGM_DIRECT_SWMR = 0x00400000;

constexpr HRESULT STG_E_INVALIDFUNCTION = zdm::Result(0x80030001);
constexpr HRESULT STG_E_FILENOTFOUND = zdm::Result(0x80030002);
constexpr HRESULT STG_E_PATHNOTFOUND = zdm::Result(0x80030003);
constexpr HRESULT STG_E_TOOMANYOPENFILES = zdm::Result(0x80030004);
constexpr HRESULT STG_E_ACCESSDENIED = zdm::Result(0x80030005);
constexpr HRESULT STG_E_INVALIDHANDLE = zdm::Result(0x80030006);
constexpr HRESULT STG_E_INSUFFICIENTMEMORY = zdm::Result(0x80030008);
constexpr HRESULT STG_E_INVALIDPOINTER = zdm::Result(0x80030009);
constexpr HRESULT STG_E_NOMOREFILES = zdm::Result(0x80030012);
constexpr HRESULT STG_E_SEEKERROR = zdm::Result(0x80030019);
constexpr HRESULT STG_E_WRITEFAULT = zdm::Result(0x8003001D);
constexpr HRESULT STG_E_READFAULT = zdm::Result(0x8003001E);
constexpr HRESULT STG_E_SHAREVIOLATION = zdm::Result(0x80030020);
constexpr HRESULT STG_E_LOCKVIOLATION = zdm::Result(0x80030021);
constexpr HRESULT STG_E_FILEALREADYEXISTS = zdm::Result(0x80030050);
constexpr HRESULT STG_E_INVALIDPARAMETER = zdm::Result(0x80030057);
constexpr HRESULT STG_E_MEDIUMFULL = zdm::Result(0x80030070);
constexpr HRESULT STG_E_ABNORMALAPIEXIT = zdm::Result(0x800300FA);
constexpr HRESULT STG_E_INVALIDHEADER = zdm::Result(0x800300FB);
constexpr HRESULT STG_E_INVALIDNAME = zdm::Result(0x800300FC);
constexpr HRESULT STG_E_UNKNOWN = zdm::Result(0x800300FD);
constexpr HRESULT STG_E_UNIMPLEMENTEDFUNCTION = zdm::Result(0x800300FE);
constexpr HRESULT STG_E_INVALIDFLAG = zdm::Result(0x800300FF);
constexpr HRESULT STG_E_INUSE = zdm::Result(0x80030100);
constexpr HRESULT STG_E_NOTCURRENT = zdm::Result(0x80030101);
constexpr HRESULT STG_E_REVERTED = zdm::Result(0x80030102);
constexpr HRESULT STG_E_CANTSAVE = zdm::Result(0x80030103);
constexpr HRESULT STG_E_OLDFORMAT = zdm::Result(0x80030104);
constexpr HRESULT STG_E_DOCFILECORRUPT = zdm::Result(0x80030109);
constexpr HRESULT STG_E_DOCFILETOOLARGE = zdm::Result(0x80030111);
constexpr HRESULT STG_E_INCOMPLETE = zdm::Result(0x80030201);

struct ZDM_INTERFACE IUnknown {
  virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) = 0;
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;
};

struct ZDM_INTERFACE ISequentialStream : IUnknown {
  /// Reads up to `size` bytes at the position. At the end: S_OK or S_FALSE with fewer bytes; go by
  /// `*read` (may be null).
  virtual HRESULT STDMETHODCALLTYPE Read(void* data, ULONG size, ULONG* read) = 0;
  /// Writes at the position; past the end the gap reads as zeros. `written` may be null.
  virtual HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG size, ULONG* written) = 0;
};

struct ZDM_INTERFACE IStream : ISequentialStream {
  /// Moves the position; past the end is allowed, before the start is STG_E_INVALIDFUNCTION.
  virtual HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin,
                                         ULARGE_INTEGER* position) = 0;
  /// Cuts or extends (with zeros); the position stays.
  virtual HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) = 0;
  virtual HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER size,
                                           ULARGE_INTEGER* read, ULARGE_INTEGER* written) = 0;
  virtual HRESULT STDMETHODCALLTYPE Commit(DWORD flags) = 0;
  virtual HRESULT STDMETHODCALLTYPE Revert() = 0;
  virtual HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size,
                                               DWORD type) = 0;
  virtual HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size,
                                                 DWORD type) = 0;
  virtual HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD flags) = 0;
  /// A second stream over the same bytes with a position of its own, starting at this one's.
  virtual HRESULT STDMETHODCALLTYPE Clone(IStream** out) = 0;
};

inline constexpr IID IID_IUnknown = {0x00000000, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
inline constexpr IID IID_ISequentialStream = {
    0x0C733A30, 0x2A1C, 0x11CE, {0xAD, 0xE5, 0x00, 0xAA, 0x00, 0x44, 0x77, 0x3D}};
inline constexpr IID IID_IStream = {0x0000000C, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

/// A stream over memory that grows as it is written; one reference for the caller.
/// `global` must be null and `deleteOnRelease` TRUE: there are no movable blocks here.
ZDM_API HRESULT CreateStreamOnHGlobal(void* global, BOOL deleteOnRelease, IStream** out);

/// A stream over a file, not buffered; one reference for the caller. `path` is UTF-16, UTF-8 on
/// disk. STGM_CREATE empties an existing file and makes a missing one. Without it, `create` makes a
/// file that must be missing (0x80070050 if there is one), and no `create` opens one that must be
/// there (0x80070002). `attributes` and `pattern` are not used.
ZDM_API HRESULT SHCreateStreamOnFileEx(LPCOLESTR path, DWORD mode, DWORD attributes, BOOL create,
                                       IStream* pattern, IStream** out);
