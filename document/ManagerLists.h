// Which managers of a document list an object, and which owners form rings.
#pragma once

#include "zdm/model/IZDMObjMgr.h"

#include <unordered_map>
#include <vector>

class CZDocument;

namespace zdm {

/// A picture of the moment; positions stay good while their elements stay.
class ManagerLists {
 public:
  struct Place {
    IZDMObjMgr* manager;
    LONGLONG position;
  };

  /// Looks at the document and at every manager in its table.
  explicit ManagerLists(CZDocument& document);

  /// Where the object is listed, manager by manager in the order of the table, the document first.
  const std::vector<Place>& Of(const IZDMObject* object) const;

 private:
  void Enter(IZDMObjMgr& manager);

  std::unordered_map<const IZDMObject*, std::vector<Place>> places_;
};

/// Rings of valid objects that own each other, each from its first member in the ID table on. The
/// document, which owns itself, is none.
std::vector<std::vector<IZDMObject*>> OwnerRings(CZDocument& document);

}  // namespace zdm
