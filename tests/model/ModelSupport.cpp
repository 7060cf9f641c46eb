#include "tests/model/ModelSupport.h"

namespace zdm::test {

ZDM_OBJECT_BODY(Canary)
ZDM_OBJECT_BODY(Stray)
ZDM_OBJECT_BODY(UIDReltn)

}  // namespace zdm::test
