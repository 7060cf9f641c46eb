#include "platform/ole/portable/StorageError.h"

#include <unistd.h>

#include <cerrno>

#include "platform/system/Text.h"

namespace zdm {

HRESULT StorageError(int error, const std::string& path) {
  switch (error) {
    case ENOENT:
      return access(FolderOf(path).c_str(), F_OK) == 0 ? STG_E_FILENOTFOUND : STG_E_PATHNOTFOUND;
    case ENOTDIR:
      return STG_E_PATHNOTFOUND;
    case EEXIST:
      return STG_E_FILEALREADYEXISTS;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      return STG_E_ACCESSDENIED;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return STG_E_MEDIUMFULL;
    case EMFILE:
    case ENFILE:
      return STG_E_TOOMANYOPENFILES;
    case ENOMEM:
      return STG_E_INSUFFICIENTMEMORY;
    case ENAMETOOLONG:
    case ELOOP:
    case EINVAL:
      return STG_E_INVALIDNAME;
    default:
      return STG_E_WRITEFAULT;
  }
}

std::string FolderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

std::string NativePath(LPCOLESTR path) {
  return ToUtf8(path);
}

}  // namespace zdm
