// The record of a property.
#include "fuzz/PropertyFuzz.h"

ZDM_FUZZ(bytes) { zdm::test::KnockOnProperty<CZProperty>(bytes); }
