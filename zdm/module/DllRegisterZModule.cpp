#include "zdm/module/DllRegisterZModule.h"

#include "zdm/parameters/BulkAdd.h"
#include "zdm/relations/ZDfValues.h"

HRESULT DllRegisterZModule() {
  ZDfDouble::rxInit();
  ZDfGUID::rxInit();
  ZDfRelation::rxInit();
  ZDfCComBSTR::rxInit();
  ZDfElement::rxInit();
  ZDfLong::rxInit();
  ZDfBool::rxInit();
  ZDfUlongPtr::rxInit();
  ZDfReltnColl::rxInit();
  return S_OK;
}

HRESULT DllUnRegisterZModule() {
  zdm::BulkAdd::FreeAll();
  ZDfValueRxClass::ReleaseRxClassChain();
  return S_OK;
}
