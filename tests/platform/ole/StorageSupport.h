// Short words for tests of streams and storages: a folder for files, bytes in and out of a stream,
// a whole tree as text.
#pragma once

#include "CompoundBuilder.h"
#include "platform/ole/OleRef.h"
#include "platform/ole/ole.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zdm::test {

using Stream = OleRef<IStream>;
using Storage = OleRef<IStorage>;

constexpr DWORD kExclusive = STGM_SHARE_EXCLUSIVE;
constexpr DWORD kReadWrite = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

/// False where the system's own classes may answer with less care than is documented (Wine does);
/// tests then ask only that a call fails, or leave the question out.
#if defined(_WIN32)
constexpr bool kOurClasses = false;
#else
constexpr bool kOurClasses = true;
#endif

/// `result` is a failure, and where the classes are ours, this one.
void ExpectRefused(HRESULT result, HRESULT expected);

/// A path in a folder that is new for this run of the program, and no file there.
Name FreshPath(const char* name);

Bytes ReadFile(const Name& path);
void WriteFile(const Name& path, const Bytes& bytes);

inline LARGE_INTEGER Move(LONGLONG offset) { return {.QuadPart = offset}; }
inline ULARGE_INTEGER Size(ULONGLONG size) { return {.QuadPart = size}; }

/// Everything from the start; the position is then at the end.
Bytes ReadAll(IStream* stream);
/// Writes all of it at the position and expects that to succeed.
void Write(IStream* stream, const Bytes& bytes);
ULONGLONG Position(IStream* stream);

/// A new file at `path`, opened for writing.
Storage CreateAt(const Name& path);
/// The file at `path` through the checked door.
Storage OpenAt(const Name& path, DWORD mode = kReadWrite);
void AddStream(IStorage* storage, const OLECHAR* name, const Bytes& bytes);
Storage AddStorage(IStorage* parent, const OLECHAR* name);
/// An element that is there; adds a failure when it cannot be opened.
Stream OpenStream(IStorage* storage, const OLECHAR* name, DWORD mode = kReadWrite);
Storage OpenFolder(IStorage* parent, const OLECHAR* name, DWORD mode = kReadWrite);
Bytes BytesOf(IStorage* storage, const OLECHAR* name);

/// What making, or opening, an element answers; it is let go of at once.
HRESULT MakesStream(IStorage* storage, const OLECHAR* name, DWORD mode = kReadWrite);
HRESULT MakesStorage(IStorage* storage, const OLECHAR* name, DWORD mode = kReadWrite);
HRESULT OpensStream(IStorage* storage, const OLECHAR* name, DWORD mode = kReadWrite);
HRESULT OpensStorage(IStorage* storage, const OLECHAR* name);

/// "name(" elements ")" for a storage and "name=size:sum " for a stream, in the enumerator's order.
std::string Describe(IStorage* storage);

}  // namespace zdm::test
