// A document to recover objects into, and the records to recover.
#pragma once

#include "tests/identity/Records.h"
#include "zdm/framework/CreateAs.h"
#include "zdm/model/IZDMObjMgr.h"
#include "zdm/module/ClassTable.h"

#include <initializer_list>
#include <stdexcept>
#include <string>

namespace zdm::test {
class Fragile;
}

ZDM_CLASS_ROW(zdm::test::TestModule, true, zdm::test::Fragile,
              "7E570000-0000-4000-8000-000000000401", IZObject, IZDMObject, IZRelation)

namespace zdm::test {

/// Its own data is one byte, which says how loading goes: 0 well, 1 damage, 2 any other exception,
/// 3 damage in the header as well, 4 in the tail. Two bytes of tail.
class Fragile : public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(Fragile)
 public:
  explicit Fragile(BYTE outcome = 0) : outcome_(outcome) {}

  void LoadOwnData(IZStream* stream, IZDatabase*) override {
    sawLoading = JudgeStatus(ZOS_LOADING);
    stream->Read(&outcome_, 1);
    if (outcome_ == 2) throw std::runtime_error("any");
    if (outcome_ != 0) throw CAtlException(E_FAIL);
  }
  void SaveOwnData(IZStream* stream, IZDatabase*) override { stream->Write(&outcome_, 1); }
  void ReadHeader(IZStream* stream) override {
    if (outcome_ == 3) throw CAtlException(E_FAIL);
    IZDMObjectImpl::ReadHeader(stream);
  }
  void SaveTail(IZStream* stream, IZDatabase*) override { stream->Write("<>", 2); }
  void LoadTail(IZStream* stream, IZDatabase*) override {
    if (outcome_ == 4) throw CAtlException(E_FAIL);
    char tail[2];
    stream->Read(tail, 2);
  }

  inline static bool sawLoading = false;

 private:
  BYTE outcome_;
};

/// The record of `object` with these IDs.
inline Bytes RecordOf(IZDMObject& object, LONG id, LONG ownerId) {
  object.SetObjectValid(true);
  Bytes bytes = BytesOf(object);
  std::memcpy(&bytes[24], &id, sizeof(id));
  std::memcpy(&bytes[28], &ownerId, sizeof(ownerId));
  return bytes;
}

/// The record of a plain object.
inline Bytes Plain(LONG id, LONG ownerId, const OLECHAR* name = OLESTR("n")) {
  const auto object = MakeObject<IZDMObject, CZDMPlainObject>();
  object->SetName(name);
  return RecordOf(*object, id, ownerId);
}

inline ZRefPtr<IZDMObjMgr> NewManager() {
  return CreateAs<IZDMObjMgr>(ClassRow<CZDMObjMgr>::kClassID);
}

/// A document with one manager, and records of objects that are still to be read.
struct Target {
  explicit Target(std::initializer_list<LONG> ids = {10, 11, 12}) {
    Fragile::zInit();
    database->Add(manager, kManager);
    for (const LONG id : ids) ListRecord(database->oids, id);
  }

  int Read(const Bytes& bytes) {
    ByteStream stream(bytes);
    return database->oids.ReadStream(&stream);
  }
  /// IDs of the manager's objects in list order.
  std::vector<LONG> Attached() const {
    std::vector<LONG> ids;
    for (LONGLONG pos = manager->GetHeadPosition(); pos != 0;) {
      ids.push_back(static_cast<LONG>(manager->GetNext(pos)->GetID()));
    }
    return ids;
  }
  /// "self<owner " for every unresolved object.
  std::string Unresolved() const {
    std::string text;
    for (const auto& record : database->oids.GetUnresolved()) {
      text += std::to_string(record.SelfID) + "<" + std::to_string(record.OwnerID) + " ";
    }
    return text;
  }

  static constexpr LONG kManager = 5;

  Document database;
  ZRefPtr<IZDMObjMgr> manager = NewManager();
};

}  // namespace zdm::test
