// The environment, the names of types, and the diagnostics, which produce no output.
#include "platform/ole/ole.h"
#include "platform/system/Environment.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjColl.h"
#include "zdm/model/IZDMObject.h"

bool COIDManager::GetSysVariant(const char* name, CStringW& value) {
  return zdm::GetEnvironment(name, value);
}

bool COIDManager::HasSameSysVariantValue(const char* name, const CStringW& value) {
  CStringW text;
  return GetSysVariant(name, text) && text.CompareNoCase(value) == 0;
}

CStringW COIDManager::GetObjType(IZDMObject* object) {
  GUID classId = {};
  LPOLESTR name = nullptr;
  if (FAILED(object->GetClassID(&classId)) || FAILED(ProgIDFromCLSID(classId, &name))) return {};
  CStringW type(name);
  CoTaskMemFree(name);
  return type;
}

void COIDManager::DumpOIDVect(IZDatabase*) {}
void COIDManager::DumpOIDVect(IZDatabase*, const LONG&) {}
void COIDManager::DumpObj(IZDMObjMgr*, const int&) {}
void COIDManager::DumpObj(IZDMObject*, const int&) {}
void COIDManager::DumpObj(OID*, const int&) {}
#if defined(_WIN32)
void COIDManager::DumpObj(IZDMObject*, const LONG&) {}
void COIDManager::DumpObj(OID*, const LONG&) {}
#endif

void COIDManager::DumpObjColl(IZDMObjColl* objects, const int&) {
  LONG number = 0;
  for (LONGLONG pos = objects->GetHeadPosition(); pos != 0; ++number) {
    objects->GetNext(pos);
    CStringW label;
    label.Format(OLESTR("第%d个:\t"), number);
  }
}

void COIDManager::DumpObjVect(const std::vector<OID*>&) {}
void COIDManager::DumpObjVect(const std::vector<OID*>&, const LONG&) {}
void COIDManager::DumpObjVect(const std::vector<OID>&) {}
// NOLINTNEXTLINE(performance-unnecessary-value-param): the form that callers know
void COIDManager::DumpTree(IZDMObject*, CStringW) {}
