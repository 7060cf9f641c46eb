// An IStream over a byte vector that whoever made it can reach: for records that are put together
// in memory, and for reading bytes that are there already. Lives on the stack or as a member,
// longer than every reference to it: references are counted and not obeyed.
#pragma once

#include "platform/ole/ole.h"

#include <utility>
#include <vector>

namespace zdm {

class ZDM_API BytesStream : public IStream {
 public:
  explicit BytesStream(std::vector<BYTE> content = {}) : bytes(std::move(content)) {}
  BytesStream(const BytesStream&) = delete;
  BytesStream& operator=(const BytesStream&) = delete;

  std::vector<BYTE> bytes;
  std::size_t position = 0;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override { return --references_; }
  HRESULT STDMETHODCALLTYPE Read(void* data, ULONG length, ULONG* read) override;
  /// E_OUTOFMEMORY when the vector cannot grow; nothing is written then.
  HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG length, ULONG* written) override;
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER offset, DWORD origin, ULARGE_INTEGER* to) override;
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
  HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD flags) override;
  // E_NOTIMPL, but for Commit, which has nothing to do.
  HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*,
                                   ULARGE_INTEGER*) override;
  HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override;
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override;
  HRESULT STDMETHODCALLTYPE Clone(IStream** out) override;

 private:
  HRESULT Resize(ULONGLONG size);

  ULONG references_ = 1;
};

}  // namespace zdm
