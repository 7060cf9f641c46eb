// The plain embedded object; see IZDMObjEmbedImpl.h.
#pragma once

#include "zdm/model/IZDMObjEmbedImpl.h"
#include "zdm/module/ClassTable.h"

class ZDM_API CZDMObjEmbed : public IZDMObjEmbedImpl<IZDMObject> {
  ZDM_OBJECT(CZDMObjEmbed)
 public:
  virtual bool IsDumpRef() { return false; }
  /// The class identifier of the extension, for a document to make it again. E_INVALIDARG for null;
  /// E_FAIL and GUID_NULL without an extension or when it has no class.
  virtual HRESULT GetExtClassID(GUID* out);
};
