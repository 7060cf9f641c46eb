// A path of objects through nested references, outermost first; one reference each.
#pragma once

#include "document/ClassTable.h"
#include "zdm/framework/IZObjectImpl.h"
#include "zdm/framework/ZRefPtr.h"
#include "zdm/host/IZOptPath.h"
#include "zdm/model/IZDMObject.h"

#include <vector>

class CZOptPath : public IZObjectImpl<IZOptPath> {
  ZDM_OBJECT(CZOptPath)
 public:
  /// A path of the same objects.
  IZObject* Clone() override;

  LONG GetCount() override { return static_cast<LONG>(objects_.size()); }
  LONGLONG GetHeadPosition() override { return objects_.empty() ? 0 : 1; }
  /// Throws CAtlException(E_FAIL) for what is no position of this path.
  IZDMObject* GetNext(LONGLONG& position) override;
  /// Null changes nothing.
  void Append(IZDMObject* object) override;
  IZDMObject* GetBottomObject() override;

 private:
  std::vector<ZRefPtr<IZDMObject>> objects_;  // position n is element n - 1
};
