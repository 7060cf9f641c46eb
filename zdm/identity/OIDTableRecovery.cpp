// Reading objects back from streams that nothing describes: each is a plain sequence of records,
// and what is damaged in one costs that record at most.
#include "platform/core/CZStream.h"
#include "platform/ole/CAtlException.h"
#include "platform/ole/OleRef.h"
#include "platform/system/Output.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/framework/LoadDepth.h"
#include "zdm/host/IZDatabase.h"
#include "zdm/host/IZPersistStrategy.h"
#include "zdm/identity/COIDManager.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/model/ObjectHeader.h"
#include "zdm/model/StoredParts.h"
#include "zdm/module/ClassTable.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

namespace {

// A class of former times: its records are those of a plain manager.
constexpr GUID kFormerManagerID = zdm::ParseGuid("48500453-9BE3-480D-B645-48CDE9751D3A");

constexpr ULONG kAllStates = 0xFFFFFFFF;
constexpr ULONG kFirstWindow = 256;  // bytes looked at in one go; grows to the next
constexpr ULONG kLargestWindow = 65536;

/// Reads `length` bytes; false when the stream ends early.
bool ReadWhole(IZStream& stream, void* data, ULONG length) {
  bool isComplete = false;
  stream.Read(data, length, &isComplete);
  return isComplete;
}

/// The first 16 bytes, at any place from the position on, that name a registered class. The stream
/// then stands behind them. False at the end of the stream.
bool FindClassID(IZStream& stream, GUID& classId) {
  const CZFactory* factory = ZCore::GetZFactory();
  ULONGLONG start = stream.GetPosition();  // of the window
  std::vector<BYTE> window;
  for (ULONG size = kFirstWindow;; size = std::min(2 * size, kLargestWindow)) {
    const std::size_t kept = window.size();
    const auto fresh = static_cast<ULONG>(std::min<ULONGLONG>(size, stream.GetBytesLeft()));
    window.resize(kept + fresh);
    if (fresh == 0 || !ReadWhole(stream, window.data() + kept, fresh)) return false;
    std::size_t at = 0;
    for (; at + sizeof(GUID) <= window.size(); ++at) {
      std::memcpy(&classId, &window[at], sizeof(GUID));
      if (classId == GUID_NULL || !factory->IsRegistered(classId)) continue;
      stream.Seek(static_cast<LONGLONG>(start + at + sizeof(GUID)), STREAM_SEEK_SET);
      return true;
    }
    start += at;
    window.erase(window.begin(), window.begin() + static_cast<std::ptrdiff_t>(at));
  }
}

ZRefPtr<IZDMObject> NewObject(const GUID& classId) {
  const bool isFormerManager = classId == kFormerManagerID;
  return zdm::CreateAs<IZDMObject>(isFormerManager ? zdm::ClassRow<CZDMObjMgr>::kClassID : classId);
}

void ReportReadError(LONG selfId, LONG ownerId) {
  CStringW text;
  text.Format(OLESTR("\n出错对象: SelfPID(%d), OwnerPID(%d)\n"), selfId, ownerId);
  zdm::DebugOutput(text);
  CStringW unlocked;
  if (COIDManager::GetSysVariant("qv_unlock", unlocked) && !unlocked.IsEmpty()) {
    zdm::ShowMessage(text, OLESTR("Read Error"), MB_OK | MB_ICONINFORMATION);
  }
}

template <class Action>
bool Succeeds(Action action) {
  try {
    action();
    return true;
  } catch (...) {
    return false;
  }
}

/// From a record's header to the end of its tail, leaving out its body. The stream comes out behind
/// the header in any case.
void SkipBody(IZDMObject& object, ULONGLONG start, IZStream* stream, IZDatabase* database) {
  auto* parts = dynamic_cast<zdm::StoredParts*>(&object);
  stream->Seek(static_cast<LONGLONG>(start), STREAM_SEEK_SET);
  if (parts == nullptr || !Succeeds([&] { parts->LoadHead(stream, database); })) {
    stream->Seek(static_cast<LONGLONG>(start + sizeof(zdm::ObjectHeader)), STREAM_SEEK_SET);
  }
  ULONG length = 0;
  ReadWhole(*stream, &length, sizeof(length));
  stream->Seek(LONGLONG{length}, STREAM_SEEK_CUR);
  if (parts != nullptr) Succeeds([&] { parts->LoadTail(stream, database); });
}

}  // namespace

/// One stream being read.
class COIDManager::RecordReader {
 public:
  RecordReader(COIDManager& table, IZStream* stream)
      : table_(table),
        stream_(stream),
        database_(zdm::ViewAs<IZDatabase>(table.GetRootObject())),
        strategy_(database_ != nullptr ? database_->GetPersistStrategy() : nullptr) {}

  int ReadAll() {
    zdm::ObjectHeader header;
    while (ReadWhole(*stream_, &header.classId, sizeof(GUID))) {
      if (table_.ProgressMeter != nullptr) table_.ProgressMeter->Step(1);
      if (GUID(header.classId) == GUID_NULL && !SkipPadding(header)) return 0;
      constexpr ULONG kRest = sizeof(header) - sizeof(GUID);
      if (!ReadWhole(*stream_, reinterpret_cast<BYTE*>(&header) + sizeof(GUID), kRest)) break;
      ZRefPtr<IZDMObject> object = NewObject(header.classId);
      if (object == nullptr && database_ != nullptr) {
        database_->CreateByType(header.type, object.Out());
      }
      if (object == nullptr) return 0;
      ReadRecord(header, object);
    }
    return 1;
  }

 private:
  /// Zeros stand where a class identifier was expected, 16 of them read: one byte is passed over,
  /// then the next class identifier is looked for at every place.
  bool SkipPadding(zdm::ObjectHeader& header) {
    BYTE passedOver;
    GUID classId;
    if (!ReadWhole(*stream_, &passedOver, 1) || !FindClassID(*stream_, classId)) return false;
    header.classId = classId;
    return true;
  }

  void ReadRecord(const zdm::ObjectHeader& header, ZRefPtr<IZDMObject>& object) {
    OID* self = table_.GetOIDByID(header.id);
    const bool isUnbound = self != nullptr && self->Object == nullptr;
    OID* owner = OwnerOf(header.ownerId);
    const ULONGLONG start = stream_->GetPosition() - sizeof(header);
    stream_->Seek(static_cast<LONGLONG>(start), STREAM_SEEK_SET);
    if (isUnbound) object->SetOID(self, false);
    if (owner != nullptr) object->SetOwnerOID(owner);
    if (!Loads(*object)) {
      stream_->Recover(kAllStates);
      ReportReadError(header.id, header.ownerId);
      SkipBody(*object, start, stream_, database_);
      KeepUnresolved(header, object);
    } else if (isUnbound) {
      Attach(header, self, owner, object);
    }  // else the object ends here
  }

  bool Loads(IZDMObject& object) {
    object.SetStatus(ZOS_LOADING);
    const bool loads = Succeeds([&] { object.Load(stream_, database_); });
    object.ClearStatus(ZOS_LOADING);
    return loads;
  }

  /// Objects of one owner follow each other.
  OID* OwnerOf(LONG id) {
    if (ownerId_ != id) {
      owner_ = table_.GetOwnerPIDByID(id);
      ownerId_ = id;
    }
    return owner_;
  }

  void Attach(const zdm::ObjectHeader& header, OID* self, OID* owner, ZRefPtr<IZDMObject>& object) {
    // An object that claims to own itself would never end.
    auto* manager =
        owner != nullptr && owner != self ? zdm::ViewAs<IZDMObjMgr>(owner->Object) : nullptr;
    if (manager == nullptr) {
      KeepUnresolved(header, object);
      return;
    }
    if (strategy_ != nullptr) {
      strategy_->Add(manager, object);
    } else {
      manager->AttachTail(object->GetIZObject());
    }
    object.Reset();
    if (self->Object == nullptr) return;  // the manager did not want it
    self->SetStatus(ZOS_ATTACHED, 0);
    self->SetStatus(ZOS_VALID, 0);
  }

  void KeepUnresolved(const zdm::ObjectHeader& header, const ZRefPtr<IZDMObject>& object) {
    UnresolvedObject& record = table_.Unresolved.emplace_back();
    record.OwnerID = header.ownerId;
    record.SelfID = header.id;
    record.ClassID = header.classId;
    record.Object = object;
  }

  COIDManager& table_;
  IZStream* stream_;
  IZDatabase* database_;                       // null without a document
  const ZRefPtr<IZPersistStrategy> strategy_;  // may be null; the host's may go meanwhile
  std::optional<LONG> ownerId_;                // of the last record
  OID* owner_ = nullptr;
};

int COIDManager::ReadStream(IZStream* stream) { return RecordReader(*this, stream).ReadAll(); }

namespace {

/// An element of a storage; its name goes with it.
struct Element {
  Element() = default;
  Element(const Element&) = delete;
  Element& operator=(const Element&) = delete;
  ~Element() { CoTaskMemFree(stat.pwcsName); }

  STATSTG stat = {};
};

}  // namespace

int COIDManager::ReadStorage(IStorage* storage) {
  struct Level {
    zdm::OleRef<IStorage> storage;
    zdm::OleRef<IEnumSTATSTG> elements;
  };
  std::vector<Level> levels;
  const auto enter = [&](zdm::OleRef<IStorage> entered) {
    if (levels.size() == zdm::LoadDepth::kMax) return;
    Level level = {std::move(entered), {}};
    if (SUCCEEDED(level.storage->EnumElements(0, nullptr, 0, level.elements.Out()))) {
      levels.push_back(std::move(level));
    }
  };
  storage->AddRef();
  for (enter(zdm::OleRef<IStorage>(storage)); !levels.empty();) {
    IStorage* current = levels.back().storage.Get();
    Element element;
    if (levels.back().elements->Next(1, &element.stat, nullptr) != S_OK) {
      levels.pop_back();
    } else if (element.stat.type == STGTY_STORAGE) {
      zdm::OleRef<IStorage> inner;
      if (SUCCEEDED(current->OpenStorage(element.stat.pwcsName, nullptr, STGM_SHARE_EXCLUSIVE,
                                         nullptr, 0, inner.Out()))) {
        enter(std::move(inner));
      }
    } else if (element.stat.type == STGTY_STREAM) {
      zdm::OleRef<IStream> stream;
      if (SUCCEEDED(current->OpenStream(element.stat.pwcsName, nullptr, STGM_SHARE_EXCLUSIVE, 0,
                                        stream.Out()))) {
        ReadObjects(stream.Get());
      }
    }
  }
  return 1;
}

/// A stream that fails leaves the others to be read.
void COIDManager::ReadObjects(IStream* stream) {
  const auto reader = zdm::CreateAs<IZStream>(CZStream::kClassID);
  if (reader == nullptr) throw CAtlException(E_OUTOFMEMORY);
  try {
    const HRESULT result = reader->AttachStream(stream);
    if (FAILED(result)) throw CAtlException(result);
    ReadStream(reader);
  } catch (const CAtlException& failure) {
    if (failure.m_hr == E_OUTOFMEMORY) throw;
  }
}
