#include "tests/model/ModelSupport.h"

#include "zdm/parameters/CZParameter.h"

namespace zdm::test {

ZDM_OBJECT_BODY(Stray)

ZRefPtr<IZParameterArray> ParametersTo(IZDMObject* target) {
  const auto parameter = zdm::MakeObject<IZParameter, CZParameter>();
  parameter->SetRelation(target, false);
  auto array = zdm::MakeObject<IZParameterArray, CZParameterArray>();
  array->BeginAdd();
  array->Add(parameter, 0);
  array->EndAdd();
  return array;
}

}  // namespace zdm::test
