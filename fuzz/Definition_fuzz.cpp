// Hostile bytes as a definition: whatever was read can be copied, and the copy is the same.
#include "fuzz/ObjectFuzz.h"
#include "zdm/model/CZDefinition.h"

ZDM_FUZZ(bytes) {
  const auto definition = zdm::test::KnockOnOwnData<CZDefinition>(bytes);
  IZDMObject* object = definition.Get();
  zdm::test::Require(zdm::CloneAs<IZDMObject>(object)->JudgeSame(object));
  definition->AssertValid(nullptr);
}
