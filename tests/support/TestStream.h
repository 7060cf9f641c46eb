// An IStream over a byte vector, on both systems, that counts its calls and fails on demand.
#pragma once

#include "platform/ole/ole.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace zdm::test {

/// Lives on the stack or as a member; its count is watched, not obeyed.
class TestStream : public IStream {
 public:
  explicit TestStream(std::vector<BYTE> content = {}) : bytes(std::move(content)) {}
  virtual ~TestStream() = default;

  std::vector<BYTE> bytes;
  std::size_t position = 0;
  int timesDropped = 0;  // how often the last reference of others was given up
  int references = 0;    // taken by others
  int calls = 0;         // Read and Write so far
  int failAfter = -1;    // calls that still succeed; negative: all
  HRESULT failure = E_ACCESSDENIED;
  ULONG writtenOnFailure = 0;   // bytes a failing write puts down all the same
  bool tellsSize = true;        // false: Stat is not supported
  std::size_t room = SIZE_MAX;  // bytes the "disk" holds; a write beyond it is short

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** out) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE Read(void* data, ULONG length, ULONG* read) override;
  HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG length, ULONG* written) override;
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER offset, DWORD origin, ULARGE_INTEGER* to) override;
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
  HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*,
                                   ULARGE_INTEGER*) override;
  HRESULT STDMETHODCALLTYPE Commit(DWORD) override;
  HRESULT STDMETHODCALLTYPE Revert() override;
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override;
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override;
  HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD) override;
  HRESULT STDMETHODCALLTYPE Clone(IStream** out) override;

 private:
  bool Fails();
};

}  // namespace zdm::test
