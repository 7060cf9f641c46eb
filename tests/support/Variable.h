// An environment variable that a test sets.
#pragma once

#include "platform/system/Text.h"

#include <cstdlib>
#include <string>
#include <utility>

namespace zdm::test {

/// Has its value while it lives; then the variable is not defined.
class Variable {
 public:
  explicit Variable(std::string name) : name_(std::move(name)) {}
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;
  ~Variable() { Set(nullptr); }

  /// @param value  null: not defined.
  void Set(const OLECHAR* value) const {
#if defined(_WIN32)
    _wputenv_s(FromUtf8(name_).c_str(), value == nullptr ? L"" : value);
#else
    value == nullptr ? unsetenv(name_.c_str()) : setenv(name_.c_str(), ToUtf8(value).c_str(), 1);
#endif
  }

 private:
  std::string name_;
};

}  // namespace zdm::test
