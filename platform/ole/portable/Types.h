// Integer, character and result types with their Windows widths, on systems that lack them.
#pragma once

#include <cstddef>
#include <cstdint>

using BYTE = std::uint8_t;
using CHAR = char;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using WORD = std::uint16_t;
using INT = std::int32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using FLOAT = float;
using DOUBLE = double;
using BOOL = int;
using HRESULT = LONG;
using SCODE = LONG;
using LCID = ULONG;
using SIZE_T = std::size_t;
using LPVOID = void*;

// Text is 16-bit everywhere; wchar_t is not, so it is not used.
using OLECHAR = char16_t;
using WCHAR = char16_t;
using LPOLESTR = OLECHAR*;
using LPCOLESTR = const OLECHAR*;
using BSTR = OLECHAR*;
#define OLESTR(text) u##text

constexpr BOOL FALSE = 0;
constexpr BOOL TRUE = 1;

#define STDMETHODCALLTYPE
#define STDAPICALLTYPE

union LARGE_INTEGER {
  LONGLONG QuadPart;
};
union ULARGE_INTEGER {
  ULONGLONG QuadPart;
};

constexpr bool SUCCEEDED(HRESULT result) { return result >= 0; }
constexpr bool FAILED(HRESULT result) { return result < 0; }

namespace zdm {
constexpr HRESULT Result(ULONG code) { return static_cast<HRESULT>(code); }
}  // namespace zdm

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = zdm::Result(0x80004001);
constexpr HRESULT E_NOINTERFACE = zdm::Result(0x80004002);
constexpr HRESULT E_POINTER = zdm::Result(0x80004003);
constexpr HRESULT E_FAIL = zdm::Result(0x80004005);
constexpr HRESULT E_UNEXPECTED = zdm::Result(0x8000FFFF);
constexpr HRESULT E_ACCESSDENIED = zdm::Result(0x80070005);
constexpr HRESULT E_OUTOFMEMORY = zdm::Result(0x8007000E);
constexpr HRESULT E_INVALIDARG = zdm::Result(0x80070057);
constexpr HRESULT REGDB_E_CLASSNOTREG = zdm::Result(0x80040154);
constexpr HRESULT CO_E_CLASSSTRING = zdm::Result(0x800401F3);
constexpr HRESULT DISP_E_TYPEMISMATCH = zdm::Result(0x80020005);
constexpr HRESULT DISP_E_BADVARTYPE = zdm::Result(0x80020008);
constexpr HRESULT DISP_E_OVERFLOW = zdm::Result(0x8002000A);
constexpr HRESULT DISP_E_BADINDEX = zdm::Result(0x8002000B);
constexpr HRESULT DISP_E_ARRAYISLOCKED = zdm::Result(0x8002000D);
