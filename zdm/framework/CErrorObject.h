// A plain record of an error: four integers, two longs, a GUID and the object concerned.
// Their meaning belongs to whoever fills the record.
#pragma once

#include "platform/ole/ole.h"

struct IZDMObject;

struct ZDM_INTERFACE CErrorObject {
  CErrorObject() = default;
  CErrorObject(const INT& int1, const INT& int2, const INT& int3, const INT& int4,
               const LONG& long1, const LONG& long2, GUID& guid, IZDMObject* object)
      : m_int1(int1),
        m_int2(int2),
        m_int3(int3),
        m_int4(int4),
        m_long1(long1),
        m_long2(long2),
        m_guid(guid),
        m_object(object) {}

  INT m_int1 = 0;
  INT m_int2 = 0;
  INT m_int3 = 0;
  INT m_int4 = 0;
  LONG m_long1 = 0;
  LONG m_long2 = 0;
  GUID m_guid = GUID_NULL;
  IZDMObject* m_object = nullptr;  ///< borrowed, copied as it is
};
