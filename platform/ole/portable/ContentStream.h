// An IStream over the bytes of a StreamContent: position, access mode, copying. Memory streams are
// just this; StorageStream adds the storage it belongs to.
#pragma once

#include "platform/ole/portable/CountedStorage.h"
#include "platform/ole/portable/StreamContent.h"

#include <memory>

namespace zdm {

class ContentStream : public CountedStorage<IStream> {
 public:
  HRESULT STDMETHODCALLTYPE Read(void* data, ULONG size, ULONG* read) override;
  HRESULT STDMETHODCALLTYPE Write(const void* data, ULONG size, ULONG* written) override;
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin,
                                 ULARGE_INTEGER* position) override;
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
  HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                                   ULARGE_INTEGER* written) override;
  HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
  HRESULT STDMETHODCALLTYPE Revert() override;
  /// Regions cannot be locked: STG_E_INVALIDFUNCTION.
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size,
                                       DWORD type) override;
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size,
                                         DWORD type) override;
  HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD flags) override;

 protected:
  explicit ContentStream(DWORD mode) : mode_(mode) {}

  /// The bytes, or a failure for every operation from now on.
  virtual HRESULT GetContent(StreamContent** out) = 0;
  /// The bytes are about to be changed. May throw std::bad_alloc.
  virtual void NoteChange() {}
  /// The name for Stat; null for none.
  virtual const std::u16string* Name() const { return nullptr; }

  DWORD mode_;
  ULONGLONG position_ = 0;

 private:
  bool Answers(REFIID iid) const final {
    return iid == IID_IStream || iid == IID_ISequentialStream;
  }
};

/// Fills `stat` with zeros and puts a copy of `name` into it, unless `flags` say no name or `name`
/// is null. E_OUTOFMEMORY; STG_E_INVALIDPOINTER for a null `stat`.
HRESULT StartStat(STATSTG* stat, DWORD flags, const std::u16string* name);

/// `base` + `move` for an origin's `base`; STG_E_INVALIDFUNCTION before the start.
HRESULT MovePosition(ULONGLONG base, LONGLONG move, ULONGLONG* position);

/// Copies up to `size` bytes from the position of `source` to that of `target` in large pieces.
HRESULT CopyBytes(IStream* source, IStream* target, ULONGLONG size, ULARGE_INTEGER* read,
                  ULARGE_INTEGER* written);

}  // namespace zdm
