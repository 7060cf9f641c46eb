#include "zdm/parameters/BulkAdd.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

struct Pool {
  Pool() = default;
  Pool(const Pool&) = delete;
  Pool& operator=(const Pool&) = delete;
  ~Pool() { zdm::BulkAdd::FreeAll(); }

  std::vector<std::unique_ptr<zdm::BulkAdd>> buffers;
};

Pool& ThePool() {
  static Pool pool;
  return pool;
}

}  // namespace

zdm::BulkAdd* zdm::BulkAdd::Take(BulkAdd** user) {
  auto& buffers = ThePool().buffers;
  const auto isFree = [](const auto& buffer) { return buffer->user_ == nullptr; };
  auto found = std::ranges::find_if(buffers, isFree);
  if (found == buffers.end()) {
    found = buffers.insert(found, std::make_unique<BulkAdd>());
  }
  (*found)->user_ = user;
  *user = found->get();
  return *user;
}

// What goes may run any code as it does, so it goes when everything else is done.
void zdm::BulkAdd::GiveBack() {
  std::vector<ParaEntry> gone;
  if (!entries.empty()) gone.swap(entries);
  *std::exchange(user_, nullptr) = nullptr;
}

void zdm::BulkAdd::FreeAll() {
  const auto gone = std::exchange(ThePool().buffers, {});
  for (const auto& buffer : gone) {
    if (buffer->user_ != nullptr) *std::exchange(buffer->user_, nullptr) = nullptr;
  }
}
