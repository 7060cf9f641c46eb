#include "platform/core/ChangeWatch.h"

namespace zdm {

ULONG ChangeWatch::number_ = 0;
ChangeWatch* ChangeWatch::first_ = nullptr;

ChangeWatch::ChangeWatch() : next_(first_) { first_ = this; }

ChangeWatch::~ChangeWatch() {
  ChangeWatch** link = &first_;
  while (*link != this) link = &(*link)->next_;
  *link = next_;
}

void ChangeWatch::Tell(ULONG number) {
  for (ChangeWatch* watch = first_; watch != nullptr; watch = watch->next_) {
    watch->OnChanged(number);
  }
}

}  // namespace zdm
