// The record of a property.
#include "fuzz/PropertyDoor.h"

ZDM_FUZZ(bytes) { zdm::test::KnockOnProperty<CZProperty>(bytes); }
