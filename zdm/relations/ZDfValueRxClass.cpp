#include "zdm/relations/ZDfValueRxClass.h"

#include "zdm/relations/ZDfValues.h"

#include <utility>

ZDfValueRxClass* ZDfValueRxClass::g_pDesc = nullptr;

bool ZDfValueRxClass::AddRxClass(ZDfValueRxClass* record) {
  if (record == nullptr) return false;
  if (g_pDesc == nullptr) g_pDesc = new ZDfValueRxClass;
  for (const ZDfValueRxClass* at = g_pDesc; at != nullptr; at = at->next) {
    if (at->type == record->type) return false;
  }
  record->next = std::exchange(g_pDesc->next, record);
  return true;
}

ZDfValue* ZDfValueRxClass::CreateZDfValue(unsigned char code) {
  if (code == 0) return nullptr;
  for (const ZDfValueRxClass* at = g_pDesc; at != nullptr; at = at->next) {
    if (at->type == code) return at->creator != nullptr ? at->creator() : nullptr;
  }
  return nullptr;
}

void ZDfValueRxClass::ReleaseRxClassChain() {
  while (g_pDesc != nullptr) delete std::exchange(g_pDesc, g_pDesc->next);
  ZDfDouble::gpDesc = nullptr;
  ZDfGUID::gpDesc = nullptr;
  ZDfRelation::gpDesc = nullptr;
  ZDfCComBSTR::gpDesc = nullptr;
  ZDfElement::gpDesc = nullptr;
  ZDfLong::gpDesc = nullptr;
  ZDfBool::gpDesc = nullptr;
  ZDfUlongPtr::gpDesc = nullptr;
  ZDfReltnColl::gpDesc = nullptr;
}
