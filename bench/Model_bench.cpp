// Data-model objects beside structs of the same fields: saving, loading, and offering references.
#include "tests/support/TestDatabase.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/identity/OID.h"
#include "zdm/model/ObjectHeader.h"
#include "zdm/relations/ZReltnVisitor.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace zdm::test {
class Counter;
}

ZDM_CLASS_ROW(zdm::test::TestModule, false, zdm::test::Counter,
              "00000000-0000-0000-0000-000000000000", IZObject, IZReltnVisitor)

namespace zdm::test {

/// Looks inside every relation and counts the records it is offered.
class Counter : public ZReltnVisitor<IZReltnVisitor> {
  ZDM_OBJECT(Counter)
 public:
  using ZReltnVisitor::Visit;

  bool Visit(IZDMObject* root, IZDMObject* owner, IZRelation* reltn) override {
    return reltn->Accept(root, owner, this);
  }
  bool Visit(IZDMObject*, IZDMObject*, OID* oid) override {
    sum += oid->ID;
    return false;
  }
  bool MapOID(IZDMObject*, IZDMObject*, IZRelation*, OID** oid) override {
    sum += (*oid)->ID;
    return false;
  }

  LONGLONG sum = 0;
};

ZDM_OBJECT_BODY(Counter)

}  // namespace zdm::test

namespace {

using namespace zdm::test;

constexpr const OLECHAR* kName = OLESTR("interior wall");

/// A document of objects with a name and three relations each.
struct Model {
  explicit Model(benchmark::State& state) : objects(static_cast<std::size_t>(state.range(0))) {
    for (auto& object : objects) object = db.MakeObject(kName);
    for (std::size_t i = 0; i < objects.size(); ++i) {
      for (const std::size_t step : {1, 7, 7919}) {
        objects[i]->AddRelation(RelationTo(objects[(i + step) % objects.size()]));
      }
    }
  }

  void Save(IZStream& stream) {
    for (const auto& object : objects) object->Save(&stream, &db);
  }

  TestDatabase db;
  std::vector<ZRefPtr<IZDMObject>> objects;
};

struct PlainObject;

/// An identity that relations hold on to when the object is gone.
struct PlainRecord {
  LONG id;
  LONG aux1;
  LONG aux2;
  ULONGLONG status;
  LONGLONG options;
  PlainObject* object;
};

struct PlainRelation {
  ULONG status;
  LONG tag;
  ULONG spare;
  PlainRecord* target;
};

struct PlainObject {
  std::unique_ptr<PlainRecord> record;
  PlainRecord* owner;
  std::vector<std::unique_ptr<PlainRelation>> relations;
  std::basic_string<OLECHAR> name;
};

/// What stands in the stream for a relation.
struct RelationRecord {
  GUID classId;
  ULONG status;
  LONG tag;
  ULONG spare;
  LONG target;
};

/// The same document, which writes and reads the same bytes.
struct PlainModel {
  explicit PlainModel(benchmark::State& state) : objects(static_cast<std::size_t>(state.range(0))) {
    for (auto& object : objects) {
      object = Make();
      object->record->id = static_cast<LONG>(&object - objects.data()) + 1;
      object->owner = &root;
      object->name = kName;
    }
    for (std::size_t i = 0; i < objects.size(); ++i) {
      for (const std::size_t step : {1, 7, 7919}) {
        PlainRecord* target = objects[(i + step) % objects.size()]->record.get();
        objects[i]->relations.push_back(
            std::unique_ptr<PlainRelation>(new PlainRelation{ZRS_VALID, -1, 0, target}));
      }
    }
  }

  static std::unique_ptr<PlainObject> Make() {
    auto object = std::make_unique<PlainObject>();
    object->record = std::unique_ptr<PlainRecord>(
        new PlainRecord{0, 0, 0, 0, zdm::kNewObjectOptions, object.get()});
    return object;
  }

  void Save(IZStream& stream) const {
    for (const auto& object : objects) {
      const PlainRecord& record = *object->record;
      const zdm::ObjectHeader header = {zdm::ClassRow<CZDMPlainObject>::kClassID,
                                        record.aux1,
                                        record.aux2,
                                        record.id,
                                        object->owner->id,
                                        1,
                                        record.options};
      stream.Write(&header, sizeof(header));
      const auto count = static_cast<LONG>(object->relations.size());
      const auto bytes = static_cast<ULONG>((object->name.size() + 1) * sizeof(OLECHAR));
      const auto length =
          static_cast<ULONG>(3 + sizeof(count) + object->relations.size() * sizeof(RelationRecord) +
                             sizeof(bytes) + bytes);
      stream.Write(&length, sizeof(length));
      const BYTE flags[] = {0, 1, 0};
      stream.Write(flags, 2);
      stream.Write(&count, sizeof(count));
      for (const auto& relation : object->relations) {
        const RelationRecord entry = {zdm::ClassRow<CZPlainSingleReltn>::kClassID, relation->status,
                                      relation->tag, relation->spare, relation->target->id};
        stream.Write(&entry, sizeof(entry));
      }
      stream.Write(flags + 2, 1);
      stream.Write(&bytes, sizeof(bytes));
      stream.Write(object->name.c_str(), bytes);
    }
  }

  PlainRecord* Find(LONG id) const {
    const auto found = std::lower_bound(
        objects.begin(), objects.end(), id,
        [](const auto& object, LONG wanted) { return object->record->id < wanted; });
    return found != objects.end() && (*found)->record->id == id ? (*found)->record.get() : nullptr;
  }

  std::unique_ptr<PlainObject> Load(IZStream& stream) const {
    auto object = Make();
    zdm::ObjectHeader header;
    stream.Read(&header, sizeof(header));
    object->record->options = header.options;
    ULONG length = 0;
    stream.Read(&length, sizeof(length));
    BYTE flags[3];
    stream.Read(flags, 2);
    LONG count = 0;
    stream.Read(&count, sizeof(count));
    for (; count > 0; --count) {
      RelationRecord entry;
      stream.Read(&entry, sizeof(entry));
      if (entry.classId != zdm::ClassRow<CZPlainSingleReltn>::kClassID) std::abort();
      object->relations.push_back(std::unique_ptr<PlainRelation>(
          new PlainRelation{entry.status, entry.tag, entry.spare, Find(entry.target)}));
    }
    stream.Read(flags + 2, 1);
    ULONG bytes = 0;
    stream.Read(&bytes, sizeof(bytes));
    if (bytes < 2 || bytes > stream.GetBytesLeft()) std::abort();
    object->name.resize(bytes / sizeof(OLECHAR));
    stream.Read(object->name.data(), bytes);
    object->name.pop_back();
    return object;
  }

  PlainRecord root = {-1, 0, 0, 0, 0, nullptr};
  std::vector<std::unique_ptr<PlainObject>> objects;
};

template <class Document>
void Save(benchmark::State& state) {
  Document document(state);
  std::vector<BYTE> bytes;  // grown by the first pass
  for (auto _ : state) {
    bytes.clear();
    ByteStream stream(std::move(bytes));
    document.Save(stream);
    benchmark::DoNotOptimize(stream.GetBytes().data());
    bytes = std::move(stream.below.bytes);
  }
}

void BM_IZDMObject_Save(benchmark::State& state) { Save<Model>(state); }
BENCHMARK(BM_IZDMObject_Save)->Arg(100000)->Unit(benchmark::kMillisecond);
void BM_IZDMObject_Save_Plain(benchmark::State& state) { Save<PlainModel>(state); }
BENCHMARK(BM_IZDMObject_Save_Plain)->Arg(100000)->Unit(benchmark::kMillisecond);

/// Makes the objects too, and ends them.
void BM_IZDMObject_Load(benchmark::State& state) {
  Model model(state);
  ByteStream stream;
  model.Save(stream);
  for (auto _ : state) {
    stream.Seek(0, STREAM_SEEK_SET);
    std::vector<ZRefPtr<IZDMObject>> loaded(model.objects.size());
    for (auto& object : loaded) {
      object = zdm::CreateAs<IZDMObject>(zdm::ClassRow<CZDMPlainObject>::kClassID);
      object->Load(&stream, &model.db);
    }
    benchmark::DoNotOptimize(loaded.data());
  }
}
BENCHMARK(BM_IZDMObject_Load)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_IZDMObject_Load_Plain(benchmark::State& state) {
  const PlainModel model(state);
  ByteStream stream;
  Model(state).Save(stream);  // as the objects wrote it
  for (auto _ : state) {
    stream.Seek(0, STREAM_SEEK_SET);
    std::vector<std::unique_ptr<PlainObject>> loaded(model.objects.size());
    for (auto& object : loaded) object = model.Load(stream);
    benchmark::DoNotOptimize(loaded.data());
  }
}
BENCHMARK(BM_IZDMObject_Load_Plain)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_IZDMObject_VisitReferences(benchmark::State& state) {
  const Model model(state);
  Counter counter;
  for (auto _ : state) {
    for (const auto& object : model.objects) object->VisitReferences(object, &counter);
    benchmark::DoNotOptimize(counter.sum);
  }
}
BENCHMARK(BM_IZDMObject_VisitReferences)->Arg(1000000)->Unit(benchmark::kMillisecond);

/// The records themselves, per object in a vector of its own.
void BM_IZDMObject_VisitReferences_Plain(benchmark::State& state) {
  const Model model(state);
  std::vector<std::vector<OID*>> references(model.objects.size());
  for (std::size_t i = 0; i < references.size(); ++i) {
    references[i].push_back(model.objects[i]->GetOwnerOID());
    IZReltnColl* relations = model.objects[i]->GetReltnColl();
    for (LONGLONG pos = relations->GetHeadPosition(); pos != 0;) {
      references[i].push_back(zdm::ViewAs<IZSingleReltn>(relations->GetNext(pos))->GetReltnOID());
    }
  }
  for (auto _ : state) {
    LONGLONG sum = 0;
    for (const auto& records : references) {
      for (const OID* record : records) sum += record->ID;
    }
    benchmark::DoNotOptimize(sum);
  }
}
BENCHMARK(BM_IZDMObject_VisitReferences_Plain)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace
