#include "tests/support/TestStream.h"

#include <algorithm>

namespace zdm::test {

bool TestStream::Fails() { return failAfter >= 0 && calls++ >= failAfter; }

ULONG TestStream::AddRef() { return static_cast<ULONG>(++references); }
ULONG TestStream::Release() {
  if (--references == 0) ++timesDropped;
  return static_cast<ULONG>(references);
}

HRESULT TestStream::Read(void* data, ULONG length, ULONG* read) {
  if (read != nullptr) *read = 0;
  return Fails() ? failure : BytesStream::Read(data, length, read);
}

HRESULT TestStream::Write(const void* data, ULONG length, ULONG* written) {
  if (written != nullptr) *written = 0;
  const bool fails = Fails();
  const std::size_t fits = position < room ? room - position : 0;
  const auto count =
      static_cast<ULONG>(std::min<std::size_t>(fits, fails ? writtenOnFailure : length));
  const HRESULT result = count != 0 ? BytesStream::Write(data, count, nullptr) : S_OK;
  if (fails || FAILED(result)) return fails ? failure : result;
  if (written != nullptr) *written = count;
  return S_OK;
}

HRESULT TestStream::Stat(STATSTG* stat, DWORD flags) {
  return tellsSize ? BytesStream::Stat(stat, flags) : E_NOTIMPL;
}

}  // namespace zdm::test
