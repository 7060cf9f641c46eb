// Class ids in streams.
#include "platform/ole/portable/Stream.h"

HRESULT WriteClassStm(IStream* stream, REFCLSID clsid) {
  if (stream == nullptr) return E_INVALIDARG;
  ULONG written = 0;
  const HRESULT result = stream->Write(&clsid, sizeof(clsid), &written);
  if (FAILED(result)) return result;
  return written == sizeof(clsid) ? S_OK : STG_E_MEDIUMFULL;
}

HRESULT ReadClassStm(IStream* stream, CLSID* clsid) {
  if (stream == nullptr || clsid == nullptr) return E_INVALIDARG;
  *clsid = CLSID_NULL;
  CLSID stored = CLSID_NULL;
  ULONG read = 0;
  const HRESULT result = stream->Read(&stored, sizeof(stored), &read);
  if (FAILED(result)) return result;
  if (read != sizeof(stored)) return STG_E_READFAULT;
  *clsid = stored;
  return S_OK;
}

HRESULT OleSaveToStream(IPersistStream* object, IStream* stream) {
  return object == nullptr ? WriteClassStm(stream, CLSID_NULL) : E_NOTIMPL;
}
