// Saving and opening a document of plain named objects with three relations each, in managers of a
// thousand. Times are the processor's; the flush to the disk is reported apart. Beside each, what
// a program without this library would do: the same objects, one allocation each, to and from a
// file of the same bytes (records, ID table, index), without checks and without a container.
#include "document/Document.h"
#include "document/DocumentError.h"
#include "document/DocumentReader.h"
#include "document/PathText.h"
#include "document/RecordChunks.h"
#include "platform/ole/StorageFile.h"
#include "zdm/identity/OID.h"
#include "zdm/model/ObjectHeader.h"

#include <benchmark/benchmark.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<BYTE>;

double Seconds(clockid_t clock) {
  timespec now = {};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

double Worked() { return Seconds(CLOCK_PROCESS_CPUTIME_ID); }

double flushed = 0;  // seconds by the wall

}  // namespace

// The library's, too.
extern "C" __attribute__((visibility("default"))) int fsync(int file) {
  const double start = Seconds(CLOCK_MONOTONIC);
  const auto result = static_cast<int>(syscall(SYS_fsync, file));
  flushed += Seconds(CLOCK_MONOTONIC) - start;
  return result;
}

namespace {

constexpr LONG kPerManager = 1000;

std::filesystem::path TempPath(const char* name) {
  return std::filesystem::temp_directory_path() / ("zdm-bench-" + std::to_string(getpid()) + name);
}

/// The targets of object `i` of `count`.
std::vector<LONG> TargetsOf(LONGLONG i, LONGLONG count) {
  return {static_cast<LONG>((7 * i + 1) % count), static_cast<LONG>((i + 1) % count),
          static_cast<LONG>((13 * i + 5) % count)};
}

zdm::Document MakeDocument(LONG count) {
  auto document = zdm::Document::Create(OLESTR("Bench"));
  IZDMObjMgr* manager = nullptr;
  std::vector<IZDMObject*> objects;
  for (LONG i = 0; i < count; ++i) {
    if (i % kPerManager == 0) manager = document.AddManager(OLESTR("Manager"));
    char name[24];
    std::snprintf(name, sizeof(name), "Object-%08d", static_cast<int>(i));
    objects.push_back(document.Add(zdm::FromUtf8(name), manager));
  }
  for (LONG i = 0; i < count; ++i) {
    for (const LONG target : TargetsOf(i, count)) {
      document.Relate(objects[static_cast<std::size_t>(i)],
                      objects[static_cast<std::size_t>(target)]);
    }
  }
  return document;
}

/// The file of such a document, made once for each size.
const std::filesystem::path& FileOf(LONG count) {
  static struct Files {
    std::vector<std::pair<LONG, std::filesystem::path>> all;
    ~Files() {
      for (const auto& file : all) std::filesystem::remove(file.second);
    }
  } files;
  for (const auto& [made, path] : files.all) {
    if (made == count) return path;
  }
  const auto path = TempPath(("-" + std::to_string(count) + ".zdm").c_str());
  MakeDocument(count).Save(path);
  files.all.emplace_back(count, path);
  return files.all.back().second;
}

void Report(benchmark::State& state, double flushes) {
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters["flush_ms"] =
      benchmark::Counter(1000 * flushes, benchmark::Counter::kAvgIterations);
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond)->UseManualTime();
}

void BM_Document_Save(benchmark::State& state) {
  auto document = zdm::Document::Open(FileOf(static_cast<LONG>(state.range(0))));
  const auto path = TempPath("-saved.zdm");
  double flushes = 0;
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    flushed = 0;
    const double start = Worked();
    document.Save(path);
    state.SetIterationTime(Worked() - start);
    flushes += flushed;
  }
  std::filesystem::remove(path);
  Report(state, flushes);
}
BENCHMARK(BM_Document_Save)->Apply(Sizes);

void BM_Document_Open(benchmark::State& state) {
  const auto& path = FileOf(static_cast<LONG>(state.range(0)));
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    const double start = Worked();
    auto document = zdm::Document::Open(path);
    state.SetIterationTime(Worked() - start);
  }
  Report(state, 0);
}
BENCHMARK(BM_Document_Open)->Apply(Sizes);

/// What `zdm info` reads.
void BM_Document_Info(benchmark::State& state) {
  const auto& path = FileOf(static_cast<LONG>(state.range(0)));
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    const double start = Worked();
    const zdm::DocumentInfo info = zdm::DocumentReader(path).GetInfo();
    state.SetIterationTime(Worked() - start);
    if (info.objects < state.range(0)) state.SkipWithError("objects are missing");
  }
  Report(state, 0);
}
BENCHMARK(BM_Document_Info)->Apply(Sizes);

// The same without the library.

struct PlainObject;

struct PlainRecord {
  LONG words[2] = {};
  LONG id = 0;
  ULONGLONG status = 0;
  LONGLONG options = 0;
  PlainObject* object = nullptr;
};

struct PlainRelation {
  GUID classId;
  LONG words[3];
  PlainRecord* target;
};

using PlainRelations = std::list<std::unique_ptr<PlainRelation>>;

struct PlainObject {
  GUID classId;
  LONG carried[2];
  BYTE type;
  PlainRecord* record;
  PlainRecord* owner;
  bool isNamed;
  std::basic_string<OLECHAR> name;
  Bytes rest;  // of what is no plain named object: a manager's current object
  std::unique_ptr<PlainRelations> relations;
  std::list<PlainObject*> members;
};

class PlainDocument {
 public:
  void Save(const std::filesystem::path& path) const;
  void Open(const std::filesystem::path& path);

 private:
  PlainRecord* RecordOf(LONG id);
  void OpenObject(const BYTE*& at);

  std::vector<std::unique_ptr<PlainRecord>> records_;  // by ID
  LONG hardIDs_ = 0;
  std::vector<std::unique_ptr<PlainObject>> objects_;
  PlainRecord root_;
};

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File OpenFile(const std::filesystem::path& path, const char* mode) {
  return {std::fopen(path.c_str(), mode), &std::fclose};
}

template <class T>
void Put(Bytes& bytes, const T& value) {
  const auto* from = reinterpret_cast<const BYTE*>(&value);
  bytes.insert(bytes.end(), from, from + sizeof(T));
}

template <class T>
T Take(const BYTE*& at) {
  T value;
  std::memcpy(&value, at, sizeof(T));
  at += sizeof(T);
  return value;
}

void PlainDocument::Save(const std::filesystem::path& path) const {
  const File file = OpenFile(path, "wb");
  const auto write = [&](Bytes& bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), file.get());
    bytes.clear();
  };
  Bytes index;
  Bytes ids;
  Bytes bytes;
  Put(ids, static_cast<ULONG>(objects_.size()));
  std::size_t start = 0;
  for (const auto& object : objects_) {
    const std::size_t from = bytes.size();
    Put(bytes, zdm::ObjectHeader{object->classId, object->carried[0], object->carried[1],
                                 object->record->id, object->owner->id, object->type,
                                 object->record->options});
    Put(bytes, ULONG{0});
    Put(bytes, BYTE{0});
    Put(bytes, static_cast<BYTE>(object->relations != nullptr));
    if (object->relations != nullptr) {
      Put(bytes, static_cast<LONG>(object->relations->size()));
      for (const auto& relation : *object->relations) {
        Put(bytes, relation->classId);
        Put(bytes, relation->words);
        Put(bytes, relation->target->id);
      }
    }
    Put(bytes, BYTE{0});
    Put(bytes, static_cast<ULONG>(object->name.size() * 2 + 2));
    const auto* name = reinterpret_cast<const BYTE*>(object->name.c_str());
    bytes.insert(bytes.end(), name, name + object->name.size() * 2 + 2);
    bytes.insert(bytes.end(), object->rest.begin(), object->rest.end());
    const auto length = static_cast<ULONG>(bytes.size() - from - sizeof(zdm::ObjectHeader) - 4);
    std::memcpy(&bytes[from + sizeof(zdm::ObjectHeader)], &length, sizeof(length));
    Put(ids, object->record->words);
    Put(ids, object->record->id);
    Put(index, zdm::IndexEntry{object->record->id, 0, static_cast<ULONG>(start + from),
                               static_cast<ULONG>(bytes.size() - from), 0});
    if (bytes.size() < (1 << 20)) continue;
    start += bytes.size();
    write(bytes);
  }
  write(bytes);
  write(ids);
  write(index);
}

/// Hard IDs descend from -2, soft ones ascend from 1, without gaps.
PlainRecord* PlainDocument::RecordOf(LONG id) {
  if (id == zdm::kRootID) return &root_;
  const LONG place = hardIDs_ + (id < 0 ? id + 1 : id - 1);
  return records_[static_cast<std::size_t>(place)].get();
}

void PlainDocument::OpenObject(const BYTE*& at) {
  const auto header = Take<zdm::ObjectHeader>(at);
  const BYTE* end = at + 4;
  end += Take<ULONG>(at);
  auto object = std::make_unique<PlainObject>();
  object->classId = header.classId;
  object->carried[0] = header.auxWord1;
  object->carried[1] = header.auxWord2;
  object->type = header.type;
  object->record = RecordOf(header.id);
  object->record->options = header.options;
  object->record->object = object.get();
  object->owner = RecordOf(header.ownerId);
  if (object->owner->object != nullptr) object->owner->object->members.push_back(object.get());
  ++at;
  if (Take<BYTE>(at) != 0) {
    object->relations = std::make_unique<PlainRelations>();
    for (LONG count = Take<LONG>(at); count > 0; --count) {
      auto relation = std::make_unique<PlainRelation>();
      relation->classId = Take<GUID>(at);
      std::memcpy(relation->words, at, sizeof(relation->words));
      at += sizeof(relation->words);
      relation->target = RecordOf(Take<LONG>(at));
      object->relations->push_back(std::move(relation));
    }
  }
  ++at;
  const auto length = Take<ULONG>(at);
  object->name.resize(length / 2 - 1);
  std::memcpy(object->name.data(), at, length - 2);
  object->rest.assign(at + length, end);
  at = end;
  objects_.push_back(std::move(object));
}

/// The tables stand behind the records: their places follow from the file's size.
void PlainDocument::Open(const std::filesystem::path& path) {
  Bytes bytes(static_cast<std::size_t>(std::filesystem::file_size(path)));
  const File file = OpenFile(path, "rb");
  if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) return;
  // The last entry of the index says where the tables begin.
  zdm::IndexEntry last;
  std::memcpy(&last, bytes.data() + bytes.size() - sizeof(last), sizeof(last));
  const BYTE* const tables = bytes.data() + last.offset + last.length;
  const BYTE* at = tables;
  for (auto count = Take<ULONG>(at); count > 0; --count) {
    auto record = std::make_unique<PlainRecord>();
    std::memcpy(record->words, at, sizeof(record->words));
    at += sizeof(record->words);
    record->id = Take<LONG>(at);
    if (record->id < 0) ++hardIDs_;
    records_.push_back(std::move(record));
  }
  root_.id = zdm::kRootID;
  objects_.reserve(records_.size());
  for (at = bytes.data(); at != tables;) OpenObject(at);
}

/// The records of a document's file one after the other, its ID table and its index.
Bytes PlainBytes(const std::filesystem::path& path) {
  zdm::OleRef<IStorage> root;
  zdm::Check(
      zdm::OpenStorage(zdm::WideName(path).c_str(), STGM_READ | STGM_SHARE_DENY_WRITE, root.Out()),
      "bench");
  Bytes all;
  Bytes part;
  zdm::ChunkReader chunks(root.Get(), zdm::kObjectsStorage);
  std::vector<std::size_t> starts;
  for (ULONG chunk = 0; SUCCEEDED(chunks.Read(chunk, &part)); ++chunk) {
    starts.push_back(all.size());
    all.insert(all.end(), part.begin(), part.end());
  }
  zdm::Check(zdm::ReadBytes(root.Get(), zdm::kIDsStream, &part), "bench");
  all.insert(all.end(), part.begin(), part.end());
  zdm::Check(zdm::ReadBytes(root.Get(), zdm::kIndexStream, &part), "bench");
  for (std::size_t at = 0; at < part.size(); at += sizeof(zdm::IndexEntry)) {
    zdm::IndexEntry entry;
    std::memcpy(&entry, &part[at], sizeof(entry));
    entry = {entry.id, 0, entry.offset + static_cast<ULONG>(starts[entry.chunk]), entry.length, 0};
    Put(all, entry);
  }
  return all;
}

Bytes AllOf(const std::filesystem::path& path) {
  Bytes bytes(static_cast<std::size_t>(std::filesystem::file_size(path)));
  const File file = OpenFile(path, "rb");
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  return bytes;
}

/// Both ways, so that what is timed is known to be the same.
class PlainFile {
 public:
  explicit PlainFile(benchmark::State& state)
      : bytes_(PlainBytes(FileOf(static_cast<LONG>(state.range(0))))) {
    const File file = OpenFile(path, "wb");
    std::fwrite(bytes_.data(), 1, bytes_.size(), file.get());
  }
  ~PlainFile() { std::filesystem::remove(path); }
  PlainFile(const PlainFile&) = delete;
  PlainFile& operator=(const PlainFile&) = delete;

  bool IsAsBefore() const { return AllOf(path) == bytes_; }

  const std::filesystem::path path = TempPath("-plain");

 private:
  Bytes bytes_;
};

void BM_Document_Save_Plain(benchmark::State& state) {
  const PlainFile file(state);
  PlainDocument document;
  document.Open(file.path);
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    const double start = Worked();
    document.Save(file.path);
    state.SetIterationTime(Worked() - start);
  }
  if (!file.IsAsBefore()) state.SkipWithError("other bytes");
  Report(state, 0);
}
BENCHMARK(BM_Document_Save_Plain)->Apply(Sizes);

void BM_Document_Open_Plain(benchmark::State& state) {
  const PlainFile file(state);
  for (auto _ : state) {  // NOLINT(clang-analyzer-deadcode.DeadStores)
    const double start = Worked();
    PlainDocument document;
    document.Open(file.path);
    state.SetIterationTime(Worked() - start);
  }
  Report(state, 0);
}
BENCHMARK(BM_Document_Open_Plain)->Apply(Sizes);

}  // namespace
