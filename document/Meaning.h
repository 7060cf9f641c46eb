// What stands for the same thing in every document, whatever its ID.
#pragma once

#include "document/PointerMap.h"

#include <string>
#include <unordered_map>

class CZDocument;
class OID;
struct IZDMObject;

namespace zdm {

/// Equal for two categories of one number, two definitions of one GUID and two materials of one
/// name; empty for an object that stands for itself alone.
std::string MeaningOf(IZDMObject& object);

/// The objects of a document by their meaning, the first of several. A picture of the moment.
class Meanings {
 public:
  explicit Meanings(CZDocument& document);
  /// The record (borrowed) of what has the meaning of `object`; null without.
  OID* Find(IZDMObject* object) const;

 private:
  std::unordered_map<std::string, OID*> records_;
  mutable PointerMap<OID*> answers_;  // by the object asked about
};

}  // namespace zdm
