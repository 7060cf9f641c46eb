// Small documents made at random, alike for one seed, and what their objects are like as text:
// managers in managers, objects, categories; relations of every kind, in collections and out of
// them, valid and not; parameters, their definitions and links; paths, current objects, references
// to what is not there.
#pragma once

#include "document/Document.h"
#include "tests/support/Sanitized.h"
#include "tests/support/UIDReltn.h"

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace zdm::test {

/// Of a test over random documents; fewer where a sanitizer looks at every step.
#if defined(ZDM_ADDRESS_SANITIZER)
constexpr unsigned kTrials = 1250;
#else
constexpr unsigned kTrials = 10000;
#endif

constexpr GUID kDefinitionKeys[] = {ParseGuid("D0000000-0000-4000-8000-000000000001"),
                                    ParseGuid("D0000001-0000-4000-8000-000000000001")};

class RandomDocument {
 public:
  /// @param objects  beside the managers and categories.
  explicit RandomDocument(unsigned seed, int objects = 6);

  Document document;
  std::vector<IZDMObject*> all;  // what is there, in order of creation
  std::mt19937 random;

  std::size_t Below(std::size_t limit) { return random() % limit; }
  bool OneIn(unsigned n) { return random() % n == 0; }
  IZDMObject* Any() { return all[Below(all.size())]; }
  /// Each with the same chance.
  std::vector<IZDMObject*> SomeOf();

 private:
  IZDMObjMgr* AnyManager() { return managers_[Below(managers_.size())]; }
  void AddObjects(int objects);
  void AddDefinitions();
  void AddParameters(IZDMObject* object);
  void AddReferences();
  ZRefPtr<IZRelation> NewRelation();
  PID* NewPath();

  std::vector<IZDMObjMgr*> managers_;
  IZDefinitionMgr* definitions_ = nullptr;
  IZDMObject* parameter_ = nullptr;  // of the document, for links
};

/// The ID to write for a record; 0 cuts the reference.
using Mapping = std::function<LONG(const OID*)>;
LONG Itself(const OID* record);

/// Name, class, options and every reference of an object, also those that no walk is offered.
std::string ShapeOf(IZDMObject* object, const Mapping& map = Itself);
/// Of every object of the document, by ID.
std::string ShapesOf(CZDocument& document);

}  // namespace zdm::test
