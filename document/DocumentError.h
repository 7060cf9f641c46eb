// Why a document could not be opened or saved.
#pragma once

#include "platform/ole/ole.h"

#include <stdexcept>
#include <string>

namespace zdm {

enum class DocumentFault {
  kNotFound,     // no such file or folder
  kNoAccess,     // not readable, not writable, in use, or a folder
  kNotDocument,  // another kind of file, or an empty one
  kNewerFormat,  // written by a later version of this library
  kDamaged,      // a document whose bytes are not as saved; recover it
  kNoRoom,       // the disk is full
  kNoMemory,
  kFailed,  // anything else; see the result code
};

class DocumentError : public std::runtime_error {
 public:
  /// @param text  one line, for people.
  DocumentError(DocumentFault fault, HRESULT result, const std::string& text)
      : std::runtime_error(text), fault_(fault), result_(result) {}

  DocumentFault Fault() const { return fault_; }
  HRESULT Result() const { return result_; }

 private:
  DocumentFault fault_;
  HRESULT result_;
};

/// The error for a storage or stream operation on the file `name` that answered `result`.
DocumentError ErrorOf(HRESULT result, const std::string& name);
/// Throws it for a failure.
void Check(HRESULT result, const std::string& name);

}  // namespace zdm
