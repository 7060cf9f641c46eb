// The definitions that the parameters of drawing objects have: one for each group code, and one for
// each tag of attributes, with names for the sheet and in the groups General, Geometry, Text,
// Attributes, Other values.
#pragma once

#include "drawing/TextCodec.h"

#include <unordered_map>

class CZDocument;
struct IZDefinitionMgr;
struct IZDMObject;

namespace zdm {

/// The key of the definition for a group code, the same in every document.
GUID KeyOfCode(LONG code);
/// The code for such a key; no value for another key.
std::optional<LONG> CodeOfKey(const GUID& key);
/// The key of the definition for attributes of a tag; in any case.
GUID KeyOfTag(const WideString& tag);

class GroupDefinitions {
 public:
  explicit GroupDefinitions(CZDocument& document) : document_(document) {}

  /// The definition (borrowed), made where it is missing.
  IZDMObject* ForCode(LONG code);
  IZDMObject* ForTag(const WideString& tag);

 private:
  IZDMObject* Query(const GUID& key, const WideString& name, ULONG type, LONG index);
  IZDefinitionMgr& Manager();

  CZDocument& document_;
  IZDefinitionMgr* manager_ = nullptr;
  std::unordered_map<LONG, IZDMObject*> byCode_;
  std::unordered_map<WideString, IZDMObject*> byTag_;
};

}  // namespace zdm
