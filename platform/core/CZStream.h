// The stream of the factory, class {65808542-5A64-45F2-B71A-A6A6D03CD2D5}: an IZStream over any
// IStream. One window of the IStream is held in a buffer that serves reads and writes alike, so
// that small ones, and seeks inside it (a length patched afterwards), do not reach the system.
// The destructor flushes, but cannot report a failure: call GetIStream or AttachStream(nullptr)
// first where it matters.
#pragma once

#include "platform/core/IZStream.h"

#include <memory>

class ZDM_API CZStream : public IZStream {
 public:
  CZStream() = default;
  CZStream(const CZStream&) = delete;
  CZStream& operator=(const CZStream&) = delete;
  ~CZStream() override;

  static const GUID kClassID;
  static CZRClass* gpDesc;

  CZRClass* getZRClass() const override;
  bool IsA(unsigned short id) override;
  ULONGLONG _GetOffsetofClass(unsigned short id) override;
  IZObject* GetIZObject() override;
  void* GetLPVOID() override;

  ULONG Release() override;
  ULONG AddRef() override;
  IZObject* Clone() override;

  void Read(void* data, ULONG length, bool* complete = nullptr) override;
  void Write(const void* data, ULONG length) override;
  ULONGLONG Seek(LONGLONG offset, ULONG origin) override;
  ULONGLONG GetPosition() override;
  void ReadBSTR(BSTR* out) override;
  void WriteBSTR(BSTR text) override;
  bool ReadFlag() override;
  void WriteFlag(bool flag) override;
  LONG ReadCount() override;
  void WriteCount(LONG count) override;
  HRESULT AttachStream(IStream* stream) override;
  IStream* GetIStream() override;
  void Recover(ULONG states) override;
  ULONGLONG GetBytesLeft() override;

 private:
  HRESULT Attach(IStream* stream);
  void Lend();
  ULONGLONG Position();
  void Resume();
  void OpenWindow(ULONGLONG position);
  void CloseWindow();
  void Flush();
  void Refill();
  void SeekBelow(ULONGLONG position);
  ULONG ReadBelow(ULONGLONG position, void* data, ULONG length);
  void WriteBelow(ULONGLONG position, const void* data, ULONG length);
  ULONG ReadSlowly(BYTE* data, ULONG length);
  void WriteSlowly(const BYTE* data, ULONG length);
  ULONGLONG GetSize();

  IStream* stream_ = nullptr;       // one reference
  std::unique_ptr<BYTE[]> buffer_;  // the window; taken with the first stream
  BYTE* current_ = nullptr;         // the position
  BYTE* valid_ = nullptr;           // end of the bytes that are read or written
  BYTE* limit_ = nullptr;           // end of the room to write to
  ULONGLONG windowStart_ = 0;       // position of the buffer's first byte
  ULONGLONG positionBelow_ = 0;     // where the IStream stands; all ones when unknown
  ULONGLONG sizeBelow_ = 0;         // of the IStream, when known
  ULONG states_ = 0;                // kReadFailed, kWriteFailed
  bool sizeKnown_ = false;
  bool dirty_ = false;  // the window holds bytes that are not written yet
  bool lent_ = false;   // the IStream was handed out; its position decides
};
