// The walk over every reference of a document beside a loop over a plain vector of the same
// pointers. Both read the ID of each record.
#include "tests/support/TestDatabase.h"
#include "zdm/identity/OID.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

class IDSum;

ZDM_CLASS_ROW(zdm::test::TestModule, false, IDSum, "00000000-0000-0000-0000-000000000000", IZObject,
              IZReltnVisitor)

/// Looks into every relation and adds up the IDs of what it is offered.
class IDSum : public ZReltnVisitor<IZReltnVisitor> {
  ZDM_OBJECT(IDSum)
 public:
  using ZReltnVisitor::Visit;
  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    return reltn->Accept(root, owner, this);
  }
  bool Visit(IZDMObject*, IZDMObject*, OID* ownerOid) override {
    if (ownerOid != nullptr) sum += ownerOid->ID;
    return false;
  }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) override {
    sum += (*oid)->ID;
    return false;
  }

  LONGLONG sum = 0;
};

ZDM_OBJECT_BODY(IDSum)

namespace {

using namespace zdm::test;

constexpr int kReltns = 3;  // of each object

/// Objects of one owner, each with relations to objects nearby.
struct Document {
  explicit Document(std::size_t count) {
    objects.reserve(count);
    for (std::size_t i = 0; i < count; ++i) objects.push_back(db.MakeObject());
    std::mt19937 random(1);
    for (std::size_t i = 0; i < count; ++i) {
      pointers.push_back(db.GetOID());
      for (int reltn = 0; reltn < kReltns; ++reltn) {
        IZDMObject* target = objects[(i + random() % 64) % count];
        objects[i]->AddRelation(RelationTo(target));
        pointers.push_back(target->GetOID());
      }
    }
  }

  TestDatabase db;
  std::vector<ZRefPtr<IZDMObject>> objects;
  std::vector<OID*> pointers;  // every record in the order in which it is offered
};

/// Made once for both benchmarks.
const Document& DocumentFor(const benchmark::State& state) {
  static const Document document(static_cast<std::size_t>(state.range(0)));
  return document;
}

void BM_IZDMObject_VisitReferences(benchmark::State& state) {
  const Document& document = DocumentFor(state);
  for (auto _ : state) {
    IDSum visitor;
    for (IZDMObject* object : document.objects) object->VisitReferences(object, &visitor);
    benchmark::DoNotOptimize(visitor.sum);
  }
}
BENCHMARK(BM_IZDMObject_VisitReferences)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_IZDMObject_VisitReferences_Plain(benchmark::State& state) {
  const Document& document = DocumentFor(state);
  for (auto _ : state) {
    LONGLONG sum = 0;
    for (const OID* oid : document.pointers) sum += oid->ID;
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(BM_IZDMObject_VisitReferences_Plain)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
