#include "platform/core/CZStream.h"

#include "platform/core/CZRClass.h"
#include "platform/ole/Bstr.h"
#include "platform/ole/CAtlException.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

const GUID CZStream::kClassID = {
    0x65808542, 0x5A64, 0x45F2, {0xB7, 0x1A, 0xA6, 0xA6, 0xD0, 0x3C, 0xD2, 0xD5}};
CZRClass* CZStream::gpDesc = nullptr;

namespace {

constexpr ULONGLONG kUnknown = ~ULONGLONG{0};
constexpr ULONG kBufferSize = 65536;  // a read or write of this size goes straight below

// The module of the framework's own classes.
constexpr GUID kCoreModuleID = {
    0x2B9C6D57, 0x0E1F, 0x4C83, {0x8F, 0x3A, 0x61, 0x5D, 0xC2, 0x70, 0x94, 0xAB}};

unsigned short ObjectID() {
  static const unsigned short id = CZObject::AddInterface("IZObject");
  return id;
}

unsigned short StreamID() {
  static const unsigned short id = CZObject::AddInterface("IZStream");
  return id;
}

CZObject* Create() { return new (std::nothrow) CZStream; }
void Destroy(CZObject* object) { delete object; }

[[maybe_unused]] const bool registered = [] {
  CZStream::gpDesc =
      newZRClass(kCoreModuleID, "ZCORE", CZStream::kClassID, "CZStream", &Create, &Destroy, 1);
  return true;
}();

/// The first and the last `Size` bytes, which overlap: a copy of Size to 2 * Size bytes.
template <std::size_t Size>
inline void CopyEnds(BYTE* to, const BYTE* from, ULONG length) {
  BYTE first[Size];
  BYTE last[Size];
  std::memcpy(first, from, Size);
  std::memcpy(last, from + length - Size, Size);
  std::memcpy(to, first, Size);
  std::memcpy(to + length - Size, last, Size);
}

/// memcpy for lengths known only at run time; short ones do not pay for a call.
inline void Copy(BYTE* to, const BYTE* from, ULONG length) {
  if (length > 32) {
    std::memcpy(to, from, length);
  } else if (length >= 16) {
    CopyEnds<16>(to, from, length);
  } else if (length >= 8) {
    CopyEnds<8>(to, from, length);
  } else if (length >= 4) {
    CopyEnds<4>(to, from, length);
  } else if (length >= 2) {
    CopyEnds<2>(to, from, length);
  } else if (length == 1) {
    *to = *from;
  }
}

}  // namespace

CZStream::~CZStream() { Attach(nullptr); }

CZRClass* CZStream::getZRClass() const { return gpDesc; }
bool CZStream::IsA(unsigned short id) { return _GetOffsetofClass(id) != ~ULONGLONG{0}; }

ULONGLONG CZStream::_GetOffsetofClass(unsigned short id) {
  if (id != ObjectID() && id != StreamID()) return ~ULONGLONG{0};
  return static_cast<ULONGLONG>(reinterpret_cast<char*>(static_cast<IZStream*>(this)) -
                                reinterpret_cast<char*>(this));
}

IZObject* CZStream::GetIZObject() { return this; }
void* CZStream::GetLPVOID() { return this; }

ULONG CZStream::Release() { return DecrementCount(); }
ULONG CZStream::AddRef() { return IncrementCount(); }
IZObject* CZStream::Clone() { return nullptr; }

void CZStream::Read(void* data, ULONG length, bool* complete) {
  if (complete != nullptr) *complete = false;
  ULONG read = length;
  if (length <= static_cast<std::size_t>(valid_ - current_)) {
    Copy(static_cast<BYTE*>(data), current_, length);
    current_ += length;
  } else {
    read = ReadSlowly(static_cast<BYTE*>(data), length);
  }
  if (complete != nullptr) *complete = read == length;
  if (read == length) return;
  std::memset(static_cast<BYTE*>(data) + read, 0, length - read);
  if (complete == nullptr) throw CAtlException(E_FAIL);
}

void CZStream::Write(const void* data, ULONG length) {
  if (length == 0) return;
  if (length > static_cast<std::size_t>(limit_ - current_)) {
    WriteSlowly(static_cast<const BYTE*>(data), length);
    return;
  }
  Copy(current_, static_cast<const BYTE*>(data), length);
  current_ += length;
  valid_ = std::max(valid_, current_);
  dirty_ = true;
}

ULONGLONG CZStream::Seek(LONGLONG offset, ULONG origin) {
  ULONGLONG from = 0;
  if (origin == STREAM_SEEK_CUR) {
    from = Position();
  } else if (origin == STREAM_SEEK_END) {
    from = GetSize();
  } else if (origin != STREAM_SEEK_SET) {
    throw CAtlException(E_INVALIDARG);
  }
  const ULONGLONG target = from + static_cast<ULONGLONG>(offset);
  const bool wrapped = offset < 0 ? target > from : target < from;
  if (wrapped || target > static_cast<ULONGLONG>(INT64_MAX)) throw CAtlException(E_INVALIDARG);
  Resume();
  if (target >= windowStart_ &&
      target - windowStart_ <= static_cast<ULONGLONG>(valid_ - buffer_.get())) {
    current_ = buffer_.get() + (target - windowStart_);
  } else {
    Flush();
    OpenWindow(target);
  }
  return target;
}

ULONGLONG CZStream::GetPosition() { return Position(); }

ULONGLONG CZStream::Position() {
  Resume();
  return windowStart_ + static_cast<ULONGLONG>(current_ - buffer_.get());
}

void CZStream::ReadBSTR(BSTR* out) {
  *out = nullptr;
  ULONG bytes = 0;
  Read(&bytes, sizeof(bytes));
  if (bytes == 0) return;
  if (bytes % 2 != 0 || bytes > GetBytesLeft()) throw CAtlException(E_FAIL);
  const ULONG units = bytes / 2 - 1;
  zdm::Bstr text;
  *text.Out() = SysAllocStringLen(nullptr, units);
  if (text.IsNull()) throw CAtlException(E_OUTOFMEMORY);
  bool complete = false;
  Read(text.Get(), bytes, &complete);
  if (!complete) throw CAtlException(E_FAIL);
  text.Get()[units] = 0;
  *out = text.Detach();
}

void CZStream::WriteBSTR(BSTR text) {
  if (text == nullptr) {
    WriteCount(0);
    return;
  }
  const ULONGLONG bytes = ULONGLONG{SysStringLen(text)} * 2 + 2;
  if (bytes > 0xFFFFFFFF) throw CAtlException(E_INVALIDARG);
  const auto length = static_cast<ULONG>(bytes);
  constexpr OLECHAR kTerminator = 0;
  BYTE record[128];  // of a short text, as most are; written in one piece
  if (length + sizeof(length) <= sizeof(record)) {
    std::memcpy(record, &length, sizeof(length));
    Copy(record + sizeof(length), reinterpret_cast<const BYTE*>(text), length - 2);
    std::memcpy(record + sizeof(length) + length - 2, &kTerminator, 2);
    Write(record, length + sizeof(length));
    return;
  }
  Write(&length, sizeof(length));
  Write(text, length - 2);
  Write(&kTerminator, 2);
}

bool CZStream::ReadFlag() {
  BYTE flag = 0;
  Read(&flag, 1);
  return flag != 0;
}

void CZStream::WriteFlag(bool flag) {
  const BYTE value = flag ? 1 : 0;
  Write(&value, 1);
}

LONG CZStream::ReadCount() {
  LONG count = 0;
  Read(&count, sizeof(count));
  return count;
}

void CZStream::WriteCount(LONG count) { Write(&count, sizeof(count)); }

HRESULT CZStream::AttachStream(IStream* stream) { return Attach(stream); }

HRESULT CZStream::Attach(IStream* stream) {
  HRESULT result = S_OK;
  try {
    if (stream_ != nullptr) Lend();  // leaves the IStream where this stream stands
  } catch (const CAtlException& failure) {
    result = failure;
  }
  if (stream != nullptr && buffer_ == nullptr) {
    buffer_.reset(new (std::nothrow) BYTE[kBufferSize]);
    if (buffer_ == nullptr) {
      stream = nullptr;
      result = E_OUTOFMEMORY;
    }
  }
  if (stream != nullptr) stream->AddRef();
  if (IStream* old = std::exchange(stream_, stream)) old->Release();
  states_ = 0;
  dirty_ = false;
  windowStart_ = 0;
  CloseWindow();
  lent_ = stream_ != nullptr;
  return result;
}

IStream* CZStream::GetIStream() {
  if (stream_ != nullptr) Lend();
  return stream_;
}

/// Brings the IStream to where this stream stands, for others to use.
void CZStream::Lend() {
  const ULONGLONG position = Position();
  Flush();
  SeekBelow(position);
  CloseWindow();
  lent_ = true;
}

void CZStream::Recover(ULONG states) { states_ &= ~states; }

ULONGLONG CZStream::GetBytesLeft() {
  const ULONGLONG position = Position();
  const ULONGLONG size = GetSize();
  return size > position ? size - position : 0;
}

/// After the IStream was handed out: goes on where it stands now.
void CZStream::Resume() {
  if (!lent_) return;
  ULARGE_INTEGER position = {};
  const HRESULT result = stream_->Seek(LARGE_INTEGER{}, STREAM_SEEK_CUR, &position);
  if (FAILED(result)) throw CAtlException(result);
  lent_ = false;
  positionBelow_ = position.QuadPart;
  sizeKnown_ = false;
  OpenWindow(positionBelow_);
}

void CZStream::OpenWindow(ULONGLONG position) {
  windowStart_ = position;
  current_ = valid_ = limit_ = buffer_.get();
  if (stream_ != nullptr) limit_ += kBufferSize;
}

/// Every read and write then takes the slow way.
void CZStream::CloseWindow() { current_ = valid_ = limit_ = buffer_.get(); }

void CZStream::Flush() {
  if (!dirty_) return;
  WriteBelow(windowStart_, buffer_.get(), static_cast<ULONG>(valid_ - buffer_.get()));
  dirty_ = false;
}

/// Moves the window to the position and fills it. Nothing is waiting to be written.
void CZStream::Refill() {
  OpenWindow(Position());
  valid_ += ReadBelow(windowStart_, buffer_.get(), kBufferSize);
}

void CZStream::SeekBelow(ULONGLONG position) {
  if (positionBelow_ == position) return;
  LARGE_INTEGER to = {};
  to.QuadPart = static_cast<LONGLONG>(position);
  positionBelow_ = kUnknown;
  const HRESULT result = stream_->Seek(to, STREAM_SEEK_SET, nullptr);
  if (FAILED(result)) throw CAtlException(result);
  positionBelow_ = position;
}

/// Reads from `position` on. The number of bytes read; fewer at the end and when the IStream fails.
ULONG CZStream::ReadBelow(ULONGLONG position, void* data, ULONG length) {
  if ((states_ & kReadFailed) != 0) return 0;
  ULONG total = 0;
  try {
    SeekBelow(position);
    while (total < length) {
      ULONG read = 0;
      const HRESULT result = stream_->Read(static_cast<BYTE*>(data) + total, length - total, &read);
      if (FAILED(result)) throw CAtlException(result);
      if (read == 0) break;
      total += read;
      positionBelow_ += read;
    }
  } catch (const CAtlException&) {
    states_ |= kReadFailed;
    positionBelow_ = kUnknown;
  }
  return total;
}

void CZStream::WriteBelow(ULONGLONG position, const void* data, ULONG length) {
  if ((states_ & kWriteFailed) != 0) throw CAtlException(E_FAIL);
  SeekBelow(position);
  ULONG written = 0;
  const HRESULT result = stream_->Write(data, length, &written);
  if (SUCCEEDED(result) && written == length) {
    positionBelow_ += written;
    if (sizeKnown_) sizeBelow_ = std::max(sizeBelow_, positionBelow_);
    return;
  }
  // A stream that fails may have moved and grown all the same.
  positionBelow_ = kUnknown;
  sizeKnown_ = false;
  states_ |= kWriteFailed;
  throw CAtlException(FAILED(result) ? result : STG_E_MEDIUMFULL);
}

ULONG CZStream::ReadSlowly(BYTE* data, ULONG length) {
  if (stream_ == nullptr) return 0;
  Resume();
  Flush();  // what throws, throws before the position moves
  ULONG total = 0;
  while (total < length) {
    const ULONG ready = std::min(length - total, static_cast<ULONG>(valid_ - current_));
    if (ready != 0) std::memcpy(data + total, current_, ready);
    current_ += ready;
    total += ready;
    if (total == length) break;
    if (length - total >= kBufferSize) {
      const ULONGLONG position = Position();
      const ULONG read = ReadBelow(position, data + total, length - total);
      OpenWindow(position + read);
      return total + read;
    }
    Refill();
    if (valid_ == current_) break;
  }
  return total;
}

void CZStream::WriteSlowly(const BYTE* data, ULONG length) {
  if (stream_ == nullptr) throw CAtlException(E_FAIL);
  const ULONGLONG position = Position();
  if (length <= static_cast<std::size_t>(limit_ - current_)) {
    Write(data, length);  // the window was only closed
    return;
  }
  Flush();
  if (length >= kBufferSize) {
    OpenWindow(position);
    WriteBelow(position, data, length);
    OpenWindow(position + length);
  } else {
    OpenWindow(position);
    Write(data, length);
  }
}

ULONGLONG CZStream::GetSize() {
  Resume();
  if (stream_ == nullptr) return 0;
  if (!sizeKnown_) {
    STATSTG stat = {};
    if (SUCCEEDED(stream_->Stat(&stat, STATFLAG_NONAME))) {
      sizeBelow_ = stat.cbSize.QuadPart;
    } else {  // a stream that does not tell its size still knows where it ends
      ULARGE_INTEGER end = {};
      positionBelow_ = kUnknown;
      const HRESULT result = stream_->Seek(LARGE_INTEGER{}, STREAM_SEEK_END, &end);
      if (FAILED(result)) throw CAtlException(result);
      sizeBelow_ = end.QuadPart;
    }
    sizeKnown_ = true;
  }
  return std::max(sizeBelow_,
                  windowStart_ + static_cast<ULONGLONG>(dirty_ ? valid_ - buffer_.get() : 0));
}
