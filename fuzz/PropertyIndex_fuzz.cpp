// The record of an index property: a property's, then the entries.
#include "fuzz/PropertyFuzz.h"

ZDM_FUZZ(bytes) { zdm::test::KnockOnProperty<CZPropertyIndex>(bytes); }
