// What surrounds the body of a stored object, for a reader that skips the body of one that cannot
// be loaded. Every object built on IZDMObjectImpl has this base. It is no interface of the
// framework: dynamic_cast reaches it, queries do not.
#pragma once

#include "platform/Export.h"

struct IZDatabase;
struct IZStream;

namespace zdm {

struct ZDM_INTERFACE StoredParts {
  virtual void LoadHead(IZStream* stream, IZDatabase* database) = 0;
  virtual void LoadTail(IZStream* stream, IZDatabase* database) = 0;

 protected:
  StoredParts() = default;
  ~StoredParts() = default;
};

}  // namespace zdm
