// A test document as the fixtures of this folder hold it: declared before the objects in it.
#pragma once

#include "tests/support/TestDatabase.h"

#include <memory>

namespace zdm::test {

class Document {
 public:
  TestDatabase* operator->() const { return database_.get(); }
  operator TestDatabase*() const { return database_.get(); }

 private:
  std::unique_ptr<TestDatabase> database_ = std::make_unique<TestDatabase>();
};

}  // namespace zdm::test
