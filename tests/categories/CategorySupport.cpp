#include "tests/categories/CategorySupport.h"

namespace zdm::test {
ZDM_OBJECT_BODY(OfferNotes)
}  // namespace zdm::test
