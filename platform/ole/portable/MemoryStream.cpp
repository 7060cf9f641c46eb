// CreateStreamOnHGlobal: a stream over memory.
#include "platform/ole/portable/ContentStream.h"

#include <memory>
#include <new>
#include <utility>

namespace zdm {

namespace {

class MemoryStream final : public ContentStream {
 public:
  explicit MemoryStream(std::shared_ptr<StreamContent> content, ULONGLONG position = 0)
      : ContentStream(STGM_READWRITE), content_(std::move(content)) {
    position_ = position;
  }

  HRESULT STDMETHODCALLTYPE Clone(IStream** out) override {
    if (out == nullptr) return STG_E_INVALIDPOINTER;
    *out = new (std::nothrow) MemoryStream(content_, position_);
    return *out != nullptr ? S_OK : E_OUTOFMEMORY;
  }

 private:
  HRESULT GetContent(StreamContent** out) override {
    *out = content_.get();
    return S_OK;
  }

  std::shared_ptr<StreamContent> content_;
};

}  // namespace

}  // namespace zdm

HRESULT CreateStreamOnHGlobal(void* global, BOOL deleteOnRelease, IStream** out) try {
  if (out == nullptr) return E_INVALIDARG;
  *out = nullptr;
  if (global != nullptr || deleteOnRelease == FALSE) return E_INVALIDARG;
  *out = new zdm::MemoryStream(std::make_shared<zdm::StreamContent>());
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}
