#include "tests/parameters/ParameterSupport.h"

namespace zdm::test {
ZDM_OBJECT_BODY(Notified)
}  // namespace zdm::test
