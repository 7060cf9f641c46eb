// A stream over bytes, on both systems, that counts its calls and fails on demand.
#pragma once

#include "platform/ole/BytesStream.h"

#include <cstdint>

namespace zdm::test {

/// Lives on the stack or as a member; its count is watched, not obeyed.
class TestStream : public BytesStream {
 public:
  using BytesStream::BytesStream;

  int timesDropped = 0;  // how often the last reference of others was given up
  int references = 0;    // taken by others
  int calls = 0;         // Read and Write so far
  int failAfter = -1;    // calls that still succeed; negative: all
  HRESULT failure = E_ACCESSDENIED;
  ULONG writtenOnFailure = 0;   // bytes a failing write puts down all the same
  bool tellsSize = true;        // false: Stat is not supported
  std::size_t room = SIZE_MAX;  // bytes the "disk" holds; a write beyond it is short

  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE Read(void* data, ULONG length, ULONG* read) override;
  HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG length, ULONG* written) override;
  HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD flags) override;

 private:
  bool Fails();
};

}  // namespace zdm::test
