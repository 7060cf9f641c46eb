// What the record of any property must stand.
#pragma once

#include "tests/properties/PropertySupport.h"

#include <cstdlib>

namespace zdm::test {

/// Whatever is read can be written, reads back the same, and can be copied and merged; damage
/// changes nothing.
template <class C>
void KnockOnProperty(const Bytes& bytes) {
  const auto property = NewOf<IZProperty, C>();
  const Bytes bare = Saved(property);
  if (Load(property, bytes) != S_OK) {
    if (Saved(property) != bare) std::abort();
    return;
  }
  const Bytes saved = Saved(property);
  const auto again = NewOf<IZProperty, C>();
  if (Load(again, saved) != S_OK || Saved(again) != saved) std::abort();
  const auto copy = CloneAs<IZProperty>(property);
  if (Saved(CloneAs<IZProperty>(copy)) != Saved(copy)) std::abort();
  copy->MergeWith(property);
  if (Saved(property) != saved) std::abort();
}

}  // namespace zdm::test
