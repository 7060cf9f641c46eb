// Documents through their files: what is saved comes back, the same bytes each time, and a file
// that is not as it was saved is refused.
#include "document/CZDMAbsentObject.h"
#include "document/CZDMPlainObject.h"
#include "document/CZDocument.h"
#include "document/Crc32c.h"
#include "document/DocumentError.h"
#include "document/DocumentReader.h"
#include "platform/ole/BytesStream.h"
#include "platform/ole/StorageFile.h"
#include "tests/support/TempFile.h"
#include "tests/support/TestDatabase.h"
#include "zdm/identity/OID.h"
#include "zdm/identity/PID.h"
#include "zdm/model/CZDMObjMgr.h"

#include <gtest/gtest.h>

#include <string>

using namespace zdm::test;
using zdm::DocumentError;
using zdm::DocumentFault;

namespace {

ZRefPtr<CZDocument> NewDocument() { return zdm::MakeObject<CZDocument, CZDocument>(); }

IZDMObject* AddPlain(IZDMObjMgr* manager, const OLECHAR* name) {
  auto object = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  object->SetName(name);
  manager->AddTail(object);
  return object;
}

IZDMObjMgr* AddManager(IZDMObjMgr* parent, const OLECHAR* name) {
  auto manager = zdm::MakeObject<IZDMObjMgr, CZDMObjMgr>();
  manager->SetName(name);
  parent->AddTail(manager);
  return manager;
}

std::string NameOf(IZDMObject* object) {
  zdm::Bstr name;
  object->GetName(name.Out());
  std::string text;
  for (UINT i = 0; i < SysStringLen(name.Get()); ++i) text += static_cast<char>(name.Get()[i]);
  return text;
}

/// "name(" members ")" for a manager, "name>target " for each relation, in order.
std::string Describe(IZDMObject* object) {
  std::string text = NameOf(object);
  if (IZReltnColl* relations = object->GetReltnColl()) {
    for (LONGLONG pos = relations->GetHeadPosition(); pos != 0;) {
      auto* single = zdm::ViewAs<IZSingleReltn>(relations->GetNext(pos));
      const OID* target = single->GetReltnOID();
      text += '>' + (target != nullptr ? std::to_string(target->ID) : "none");
    }
  }
  if (auto* manager = zdm::ViewAs<IZDMObjMgr>(object)) {
    text += '(';
    for (LONGLONG pos = manager->GetHeadPosition(); pos != 0;) {
      text += Describe(manager->GetNext(pos)) + ' ';
    }
    text += ')';
  }
  return text;
}

DocumentFault FaultOf(const std::filesystem::path& path) {
  try {
    CZDocument::Open(path);
  } catch (const DocumentError& error) {
    EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
    return error.Fault();
  }
  ADD_FAILURE() << "opened";
  return DocumentFault::kFailed;
}

auto FileCount(const std::filesystem::path& folder) {
  return std::distance(std::filesystem::directory_iterator(folder), {});
}

/// A house of two managers, one inside the other, with objects that refer to each other.
ZRefPtr<CZDocument> House() {
  auto document = NewDocument();
  document->SetName(OLESTR("House"));
  IZDMObjMgr* walls = AddManager(document, OLESTR("Walls"));
  IZDMObjMgr* doors = AddManager(walls, OLESTR("Doors"));
  IZDMObject* wall = AddPlain(walls, OLESTR("Wall"));
  IZDMObject* door = AddPlain(doors, OLESTR("Door"));
  wall->AddRelation(RelationTo(door));
  door->AddRelation(RelationTo(wall));
  door->AddRelation(RelationTo(walls));
  doors->SetCurrent(door);
  for (IZDMObject* each : {door, static_cast<IZDMObject*>(document)}) {
    each->GetOID()->AuxWord1 = 7;
    each->GetOID()->AuxWord2 = 8;
  }
  document->GetPIDManager()->QueryPID(door);
  return document;
}

constexpr const char* kHouse = "House(Walls(Doors(Door>3>1 ) Wall>4 ) )";

TEST(DocumentFile, WhatIsSavedComesBackAndTheSameBytesEachTime) {
  const auto first = TempFile("first.zdm");
  const auto second = TempFile("second.zdm");
  auto document = House();
  EXPECT_TRUE(document->IsModified());
  document->SaveAs(first);
  EXPECT_FALSE(document->IsModified());
  EXPECT_EQ(document->GetPath(), first);

  auto opened = CZDocument::Open(first);
  EXPECT_EQ(Describe(opened), kHouse);
  EXPECT_FALSE(opened->IsModified());
  auto* doors = zdm::ViewAs<IZDMObjMgr>(opened->GetOIDByID(2)->Object);
  ASSERT_NE(doors, nullptr);
  ASSERT_NE(doors->GetCurrent(), nullptr);
  EXPECT_EQ(NameOf(doors->GetCurrent()), "Door");
  EXPECT_EQ(opened->GetPIDManager()->GetPIDs().size(), 1u);
  EXPECT_EQ(doors->GetDatabase(), static_cast<IZDatabase*>(opened));

  opened->SaveAs(second);
  EXPECT_EQ(FileBytes(first), FileBytes(second));
  AddPlain(doors, OLESTR("Another"));
  EXPECT_TRUE(opened->IsModified());
  opened->Save();
  EXPECT_NE(FileBytes(first), FileBytes(second));
  EXPECT_EQ(Describe(CZDocument::Open(second)), "House(Walls(Doors(Door>3>1 Another ) Wall>4 ) )");
}

TEST(DocumentFile, TellsHowFarOpeningAndSavingAre) {
  struct Meter : IZObjectImpl<IZProgressMeter> {
    void SetRange(LONG steps) override { range = steps; }
    void Step(LONG steps) override { done += steps; }
    LONG range = 0;
    LONG done = 0;
  };
  const auto path = TempFile("meter.zdm");
  const auto saving = zdm::Attached(new Meter);
  const auto opening = zdm::Attached(new Meter);
  House()->SaveAs(path, saving);
  CZDocument::Open(path, opening);
  for (const Meter* meter : {saving.Get(), opening.Get()}) {
    EXPECT_EQ(meter->range, 4);
    EXPECT_EQ(meter->done, 4);
  }
}

TEST(DocumentFile, OrderInManagersIsKept) {
  const auto path = TempFile("order.zdm");
  auto document = NewDocument();
  IZDMObjMgr* walls = AddManager(document, OLESTR("Walls"));
  for (const OLECHAR* name : {OLESTR("a"), OLESTR("b"), OLESTR("c")}) AddPlain(walls, name);
  AddManager(document, OLESTR("Empty"));
  document->MoveToHead(document->GetTailPosition());
  walls->MoveToTail(walls->GetHeadPosition());
  document->SaveAs(path);
  auto opened = CZDocument::Open(path);
  EXPECT_EQ(Describe(opened), "(Empty() Walls(b c a ) )");
  const auto before = FileBytes(path);
  opened->Save();
  EXPECT_EQ(FileBytes(path), before);
}

TEST(DocumentFile, AnIDReferredToIsKeptWithoutItsObject) {
  const auto path = TempFile("lost.zdm");
  auto document = NewDocument();
  IZDMObject* wall = AddPlain(document, OLESTR("Wall"));
  IZDMObject* gone = AddPlain(document, OLESTR("Gone"));
  wall->AddRelation(RelationTo(gone));
  document->GetPIDManager()->QueryPID(gone);
  gone->SetObjectValid(false);
  document->SaveAs(path);
  auto opened = CZDocument::Open(path);
  EXPECT_EQ(Describe(opened), "(Wall>2 )");
  EXPECT_EQ(opened->GetPIDManager()->GetPIDs().front()->OIDs.size(), 1u) << "on a path, too";
  EXPECT_EQ(AddPlain(opened, OLESTR("New"))->GetID(), 3u) << "the lost one's ID is not given again";
  opened->RemoveTailNoReturn();
  opened->SaveAs(TempFile("again.zdm"));
  EXPECT_EQ(FileBytes(path), FileBytes(opened->GetPath()));
}

TEST(DocumentFile, AnObjectInNoManagerStaysInTheDocument) {
  const auto path = TempFile("stray.zdm");
  auto document = NewDocument();
  AddPlain(document, OLESTR("Owner"));
  const ZRefPtr<IZDMObject> stray = AddPlain(document, OLESTR("Stray"));
  document->RemoveItem(stray);
  stray->SetOwner(document->GetHead());
  document->SaveAs(path);
  auto opened = CZDocument::Open(path);
  EXPECT_EQ(Describe(opened), "(Owner )");
  ASSERT_EQ(opened->GetStrays().size(), 1u);
  EXPECT_EQ(NameOf(opened->GetStrays()[0]), "Stray");
  opened->SaveAs(TempFile("again.zdm"));
  EXPECT_EQ(FileBytes(path), FileBytes(opened->GetPath()));
}

TEST(DocumentFile, RecordsFillStreamsOfBoundedSize) {
  const auto path = TempFile("many.zdm");
  auto document = NewDocument();
  IZDMObjMgr* walls = AddManager(document, OLESTR("Walls"));
  const std::basic_string<OLECHAR> text(500, OLESTR('x'));
  const std::basic_string<OLECHAR> huge(zdm::kChunkSize, OLESTR('y'));
  for (int i = 0; i < 2500; ++i) AddPlain(walls, i == 1100 ? huge.c_str() : text.c_str());
  document->SaveAs(path);
  const zdm::DocumentInfo info = zdm::DocumentReader(path).GetInfo();
  EXPECT_EQ(info.objects, 2501u);
  EXPECT_EQ(info.ids, 2501u);
  EXPECT_EQ(info.chunks, 5u) << "two full ones, the huge record, the rest";
  EXPECT_GT(info.largestRecord, 2 * zdm::kChunkSize);
  EXPECT_EQ(info.highestId, 2501);
  auto opened = CZDocument::Open(path);
  auto* loaded = zdm::ViewAs<IZDMObjMgr>(opened->GetHead());
  ASSERT_NE(loaded, nullptr);
  EXPECT_EQ(loaded->GetCount(), 2500);
  EXPECT_EQ(NameOf(loaded->GetTail()).size(), 500u);
  const auto before = FileBytes(path);
  opened->Save();
  EXPECT_EQ(FileBytes(path), before);
}

TEST(DocumentFile, WhatIsNoSoundDocumentIsRefused) {
  const auto path = TempFile("sound.zdm");
  House()->SaveAs(path);
  const auto sound = FileBytes(path);
  EXPECT_EQ(FaultOf(TempFile("absent.zdm")), DocumentFault::kNotFound);
  EXPECT_EQ(FaultOf(path.parent_path()), DocumentFault::kNoAccess);
  const auto other = TempFile("other.zdm");
  WriteFileBytes(other, {});
  EXPECT_EQ(FaultOf(other), DocumentFault::kNotDocument);
  WriteFileBytes(other, std::vector<BYTE>(5000, 'a'));
  EXPECT_EQ(FaultOf(other), DocumentFault::kNotDocument);

  // Every byte that a stream holds is covered by a checksum.
  const std::basic_string<BYTE> name = {'D', 0, 'o', 0, 'o', 0, 'r', 0, 0, 0};
  const std::basic_string<BYTE> all(sound.begin(), sound.end());
  const auto at = all.rfind(name);
  ASSERT_NE(at, std::string::npos);
  auto damaged = sound;
  damaged[at] ^= 1;
  WriteFileBytes(other, damaged);
  EXPECT_EQ(FaultOf(other), DocumentFault::kDamaged);
}

/// The leak checker sees what does not end.
TEST(DocumentFile, ManagersInARingEndWithTheDocument) {
  const auto path = TempFile("ring.zdm");
  auto document = NewDocument();
  IZDMObjMgr* outer = AddManager(document, OLESTR("Outer"));
  IZDMObjMgr* inner = AddManager(outer, OLESTR("Inner"));
  inner->AttachTail(outer);
  document->RemoveItem(outer);
  document->SaveAs(path);
  auto opened = CZDocument::Open(path);
  EXPECT_EQ(opened->GetCount(), 0);
  EXPECT_EQ(opened->GetOIDManager()->GetValidOIDCount(), 2);
}

/// Objects that were read before the damage end too.
TEST(DocumentFile, OpeningThatFailsLateLeavesNothingBehind) {
  const auto path = TempFile("late.zdm");
  auto document = House();
  document->SetName(OLESTR("A name that stands nowhere else"));
  document->SaveAs(path);
  auto bytes = FileBytes(path);
  const std::basic_string<BYTE> name = {'n', 0, 'o', 0, 'w', 0, 'h', 0, 'e', 0, 'r', 0, 'e', 0};
  const auto at = std::basic_string<BYTE>(bytes.begin(), bytes.end()).find(name);
  ASSERT_NE(at, std::string::npos);
  bytes[at] ^= 1;
  WriteFileBytes(path, bytes);
  EXPECT_EQ(FaultOf(path), DocumentFault::kDamaged);
}

TEST(DocumentFile, SavingThatFailsLeavesTheFileAlone) {
  const auto path = TempFile("kept.zdm");
  auto document = House();
  document->SaveAs(path);
  const auto before = FileBytes(path);
  const auto files = FileCount(path.parent_path());
  EXPECT_THROW(document->SaveAs(path.parent_path() / "no-such-folder" / "x.zdm"), DocumentError);
  EXPECT_EQ(document->GetPath(), path);

  class Failing : public CZDMPlainObject {
    void SaveOwnData(IZStream*, IZDatabase*) override { throw CAtlException(E_FAIL); }
  };
  auto failing = zdm::MakeObject<IZDMObject, Failing>();
  document->AddTail(failing);
  EXPECT_THROW(document->Save(), CAtlException);
  EXPECT_EQ(FileBytes(path), before);
  EXPECT_EQ(FileCount(path.parent_path()), files) << "no half file is left behind";
  document->RemoveTailNoReturn();
}

}  // namespace
