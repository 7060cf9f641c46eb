#include "tests/support/UIDReltn.h"

namespace zdm::test {

ZDM_OBJECT_BODY(UIDReltn)

}  // namespace zdm::test
