#include "platform/ole/portable/StorageError.h"

#include "platform/system/Text.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

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
    case ENXIO:  // a pipe without its other end, a socket
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

bool NativePath(LPCOLESTR path, std::string* out) {
  const WideView text = path;
  *out = ToUtf8(text);
  return FromUtf8(*out) == text;
}

bool MayAccess(const std::string& path, int rights) {
  return faccessat(AT_FDCWD, path.c_str(), rights, AT_EACCESS) == 0;
}

}  // namespace zdm
