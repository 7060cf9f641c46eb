#include "document/DocumentError.h"

#include <cstdio>

namespace zdm {

namespace {

std::string Hex(HRESULT result) {
  char text[16];
  std::snprintf(text, sizeof(text), "0x%08X", static_cast<unsigned>(result));
  return text;
}

}  // namespace

DocumentError ErrorOf(HRESULT result, const std::string& name) {
  const auto error = [&](DocumentFault fault, const char* text) {
    return DocumentError(fault, result, name + ": " + text);
  };
  switch (result) {
    case STG_E_FILENOTFOUND:
      return error(DocumentFault::kNotFound, "no such file");
    case STG_E_PATHNOTFOUND:
    case STG_E_INVALIDNAME:
      return error(DocumentFault::kNotFound, "no such folder");
    case STG_E_ACCESSDENIED:
      return error(DocumentFault::kNoAccess, "access denied");
    case STG_E_SHAREVIOLATION:
    case STG_E_LOCKVIOLATION:
      return error(DocumentFault::kNoAccess, "in use by another program");
    case STG_E_FILEALREADYEXISTS:
      return error(DocumentFault::kNotDocument, "not a document");
    case STG_E_DOCFILECORRUPT:
      return error(DocumentFault::kDamaged, "damaged");
    case STG_E_MEDIUMFULL:
      return error(DocumentFault::kNoRoom, "no room left on the disk");
    case E_OUTOFMEMORY:
    case STG_E_INSUFFICIENTMEMORY:
      return error(DocumentFault::kNoMemory, "out of memory");
    default:
      return {DocumentFault::kFailed, result, name + ": failed with " + Hex(result)};
  }
}

void Check(HRESULT result, const std::string& name) {
  if (FAILED(result)) throw ErrorOf(result, name);
}

}  // namespace zdm
