// A stream over bytes in memory, for tests of what is read and written. It has no IStream below and
// knows no strings.
#pragma once

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/core/CAtlException.h"
#include "platform/core/IZStream.h"

namespace zdm::test {

class MemoryZStream final : public IZStream {
 public:
  MemoryZStream() = default;
  explicit MemoryZStream(std::vector<BYTE> bytes) : bytes_(std::move(bytes)) {}
  const std::vector<BYTE>& GetBytes() const { return bytes_; }

  ULONG Release() override { return DecrementCount(); }
  ULONG AddRef() override { return IncrementCount(); }
  IZObject* Clone() override { return nullptr; }

  void Read(void* data, ULONG length, bool* complete = nullptr) override {
    const auto present = static_cast<ULONG>(std::min<ULONGLONG>(length, GetBytesLeft()));
    std::memset(data, 0, length);
    if (present != 0) std::memcpy(data, bytes_.data() + position_, present);
    position_ += present;
    if (present == length) return;
    if (complete == nullptr) throw CAtlException(E_FAIL);
    *complete = false;
  }
  void Write(const void* data, ULONG length) override {
    if (bytes_.size() < position_ + length) bytes_.resize(position_ + length);
    if (length != 0) std::memcpy(bytes_.data() + position_, data, length);
    position_ += length;
  }
  ULONGLONG Seek(LONGLONG offset, ULONG origin) override {
    if (origin > STREAM_SEEK_END) throw CAtlException(E_INVALIDARG);
    const ULONGLONG from = origin == STREAM_SEEK_SET   ? 0
                           : origin == STREAM_SEEK_CUR ? position_
                                                       : bytes_.size();
    if (offset < 0 && from < 0 - static_cast<ULONGLONG>(offset)) throw CAtlException(E_INVALIDARG);
    return position_ = from + static_cast<ULONGLONG>(offset);
  }
  ULONGLONG GetPosition() override { return position_; }
  void ReadBSTR(BSTR*) override { throw CAtlException(E_NOTIMPL); }
  void WriteBSTR(BSTR) override { throw CAtlException(E_NOTIMPL); }
  bool ReadFlag() override {
    BYTE flag;
    Read(&flag, sizeof(flag));
    return flag != 0;
  }
  void WriteFlag(bool flag) override {
    const BYTE value = flag ? 1 : 0;
    Write(&value, sizeof(value));
  }
  LONG ReadCount() override {
    LONG count;
    Read(&count, sizeof(count));
    return count;
  }
  void WriteCount(LONG count) override { Write(&count, sizeof(count)); }
  HRESULT AttachStream(IStream*) override { return E_NOTIMPL; }
  IStream* GetIStream() override { return nullptr; }
  void Recover(ULONG) override {}
  ULONGLONG GetBytesLeft() override {
    return position_ < bytes_.size() ? bytes_.size() - position_ : 0;
  }

 private:
  std::vector<BYTE> bytes_;
  ULONGLONG position_ = 0;
};

}  // namespace zdm::test
