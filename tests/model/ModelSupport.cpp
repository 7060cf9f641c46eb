#include "tests/model/ModelSupport.h"

namespace zdm::test {

ZDM_OBJECT_BODY(Canary)
ZDM_OBJECT_BODY(Stray)

}  // namespace zdm::test
