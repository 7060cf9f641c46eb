// What the record of any property must stand.
#pragma once

#include "fuzz/Fuzz.h"
#include "tests/properties/PropertySupport.h"

namespace zdm::test {

/// Whatever is read can be written, reads back the same, and can be copied and merged; damage
/// changes nothing.
template <class C>
void KnockOnProperty(const Bytes& bytes) {
  const auto property = NewOf<IZProperty, C>();
  const Bytes bare = Saved(property);
  if (Load(property, bytes) != S_OK) {
    Require(Saved(property) == bare);
    return;
  }
  const Bytes saved = Saved(property);
  const auto again = NewOf<IZProperty, C>();
  Require(Load(again, saved) == S_OK && Saved(again) == saved);
  const auto copy = CloneAs<IZProperty>(property);
  Require(Saved(CloneAs<IZProperty>(copy)) == Saved(copy));
  copy->MergeWith(property);
  Require(Saved(property) == saved);
}

}  // namespace zdm::test
