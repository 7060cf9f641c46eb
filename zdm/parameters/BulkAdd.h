// What has been added to an array between BeginAdd and EndAdd. The library keeps these for all
// arrays and uses them again; they go when the module is unregistered. On one thread at a time.
#pragma once

#include "zdm/parameters/ZParaArray.h"

#include <vector>

namespace zdm {

class BulkAdd {
 public:
  /// The first that is not in use, and empty (borrowed). `*user` is where its user keeps it: it
  /// becomes null if the buffer goes before it is given back.
  static BulkAdd* Take(BulkAdd** user);
  /// Frees all; what they hold is released.
  static void FreeAll();

  /// Releases what it holds; another array may take it then.
  void GiveBack();

  std::vector<ParaEntry> entries;

 private:
  BulkAdd** user_ = nullptr;  // null while it is not in use
};

}  // namespace zdm
