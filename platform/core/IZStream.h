// The serialization stream of every persistent object: little-endian, buffered both ways over an
// IStream. Implemented by CZStream. Operations that need the IStream's position or size throw
// CAtlException with its result when it cannot tell them.
#pragma once

#include "platform/core/IZObject.h"

struct ZDM_INTERFACE IZStream : IZObject {
  /// Reads `length` bytes. A short read, also of an IStream that fails, zeroes the rest of `data`;
  /// it sets `*complete` to false, or without `complete` throws CAtlException(E_FAIL). Throws, with
  /// the position unchanged, when bytes waiting to be written cannot be.
  virtual void Read(void* data, ULONG length, bool* complete = nullptr) = 0;  // 3
  /// Writes `length` bytes. Throws CAtlException with the stream's own result when it fails.
  virtual void Write(const void* data, ULONG length) = 0;  // 4
  /// Moves to `offset` from `origin` (STREAM_SEEK_SET, _CUR, _END). Returns the new position.
  /// Throws CAtlException(E_INVALIDARG) for a position before the start or an unknown origin.
  virtual ULONGLONG Seek(LONGLONG offset, ULONG origin) = 0;  // 5
  /// Position in bytes from the start.
  virtual ULONGLONG GetPosition() = 0;  // 6
  /// Reads a string into `*out` (SysFreeString by the caller); null and empty stay apart.
  /// Damage (an odd length, or one past the bytes left) throws CAtlException(E_FAIL); `*out` is
  /// null.
  virtual void ReadBSTR(BSTR* out) = 0;  // 7
  /// 32-bit byte length that includes a two-byte terminator (0 for null, 2 for empty), then the
  /// UTF-16 units and the terminator.
  virtual void WriteBSTR(BSTR text) = 0;  // 8
  /// One byte; any non-zero byte is true. Short reads throw CAtlException(E_FAIL).
  virtual bool ReadFlag() = 0;  // 9
  /// One byte, 1 or 0.
  virtual void WriteFlag(bool flag) = 0;  // 10
  /// A 32-bit count. Short reads throw CAtlException(E_FAIL).
  virtual LONG ReadCount() = 0;  // 11
  /// A signed 32-bit count.
  virtual void WriteCount(LONG count) = 0;  // 12
  /// Flushes and lets go of the current IStream and takes `stream` (one reference; null for none).
  /// Reading and writing go on at the position it has; error states are cleared. Returns the result
  /// of the flush, or E_OUTOFMEMORY and no stream when there is no memory for the buffer.
  virtual HRESULT AttachStream(IStream* stream) = 0;  // 13
  /// The IStream below (borrowed, null when none), flushed and standing where this stream stands.
  /// After the caller has used it, this stream resumes where it then stands. Throws CAtlException
  /// with the IStream's result when flushing fails; the bytes stay for another try.
  virtual IStream* GetIStream() = 0;  // 14
  /// Clears the error states in `states` (kReadFailed, kWriteFailed; all ones for every one).
  /// An IStream that failed is not asked again, and every operation that needs it fails, until
  /// then.
  virtual void Recover(ULONG states) = 0;  // 15
  /// Bytes between the position and the end, to check a stored length or count against.
  virtual ULONGLONG GetBytesLeft() = 0;  // 16

  static constexpr ULONG kReadFailed = 1;
  static constexpr ULONG kWriteFailed = 2;
};
