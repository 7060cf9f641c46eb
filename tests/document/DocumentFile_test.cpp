// Documents through their files: what is saved comes back, the same bytes each time, and a file
// that is not as it was saved is refused.
#include "document/DocumentError.h"
#include "document/DocumentReader.h"
#include "tests/document/DocumentSupport.h"
#include "tests/document/RandomDocument.h"
#include "tests/support/Bytes.h"
#include "zdm/identity/PID.h"

#include <algorithm>
#include <string>

using namespace zdm::test;
using zdm::Document;
using zdm::DocumentError;
using zdm::DocumentFault;

namespace {

constexpr LONG kDefaults = 3;  // objects that every document comes with

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

/// The names in a manager, in order.
std::string NamesIn(CZDocument& document, LONG id) {
  std::string names;
  auto* manager = zdm::ViewAs<IZDMObjMgr>(document.GetOIDByID(id)->Object);
  for (LONGLONG pos = manager->GetHeadPosition(); pos != 0;) {
    names += NameOf(manager->GetNext(pos)) + ' ';
  }
  return names;
}

/// Names and references of all objects.
std::string LinksIn(CZDocument& document) {
  std::string text;
  for (const OID* oid : document.GetOIDManager()->GetOIDs()) {
    if (oid->Object == nullptr) continue;
    text += NameOf(oid->Object) + ": ";
    for (const auto& [from, to, via, relation] : zdm::ReferencesOf(oid->Object)) {
      text += LinkOf(from, to, via) + ' ';
    }
  }
  return text;
}

TEST(DocumentFile, AnyDocumentComesBackAsItWas) {
  for (unsigned seed = 0; seed < 100; ++seed) {
    SCOPED_TRACE(seed);
    RandomDocument made(seed);
    auto& document = made.document;
    EXPECT_TRUE(document->IsModified());
    for (OID* oid : {document->GetOID(), document->GetOIDManager()->GetOIDs().back()}) {
      oid->AuxWord1 = 7;
      oid->AuxWord2 = 8;
    }
    const auto opened = Reopened(*document.Get());
    EXPECT_FALSE(document->IsModified() || opened->IsModified());
    ASSERT_EQ(LinksIn(*opened), LinksIn(*document.Get()));
  }
}

TEST(DocumentFile, IsSavedUnderItsNameAgainWhenItWasChanged) {
  auto document = Document::Create();
  IZDMObjMgr* walls = document.AddManager(OLESTR("Walls"));  // 1
  for (const OLECHAR* name : {OLESTR("a"), OLESTR("b"), OLESTR("c")}) document.Add(name, walls);
  document.Save(TempFile("walls.zdm"));
  const auto opened = CZDocument::Open(document->GetPath());
  EXPECT_EQ(opened->GetPath(), document->GetPath());
  walls = zdm::ViewAs<IZDMObjMgr>(opened->GetOIDByID(1)->Object);
  EXPECT_EQ(walls->GetDatabase(), static_cast<IZDatabase*>(opened));
  walls->MoveToTail(walls->GetHeadPosition());
  walls->AddTail(zdm::MakeObject<IZDMObject, CZDMPlainObject>());
  opened->MoveToHead(opened->GetTailPosition());
  EXPECT_TRUE(opened->IsModified());
  opened->Save();
  const auto reopened = CZDocument::Open(document->GetPath());
  EXPECT_EQ(NamesIn(*reopened, 1), "b c a  ");
  EXPECT_EQ(NameOf(reopened->GetHead()), "Walls");
}

TEST(DocumentFile, TellsHowFarOpeningAndSavingAre) {
  struct Meter : IZObjectImpl<IZProgressMeter> {
    void SetRange(LONG steps) override { range = steps; }
    void Step(LONG steps) override { done += steps; }
    LONG range = 0;
    LONG done = 0;
  };
  auto document = Document::Create();
  document.Add(OLESTR("Wall"));
  const auto saving = zdm::Attached(new Meter);
  const auto opening = zdm::Attached(new Meter);
  document->SaveAs(TempFile("meter.zdm"), saving);
  CZDocument::Open(document->GetPath(), opening);
  for (const Meter* meter : {saving.Get(), opening.Get()}) {
    EXPECT_EQ(meter->range, 1 + kDefaults);
    EXPECT_EQ(meter->done, 1 + kDefaults);
  }
}

TEST(DocumentFile, AnIDReferredToIsKeptWithoutItsObject) {
  auto document = Document::Create();
  IZDMObject* gone = document.Add(OLESTR("Gone"));  // 1
  document.Relate(document.Add(OLESTR("Wall")), gone);
  document->GetPIDManager()->QueryPID(gone);
  gone->SetObjectValid(false);
  auto opened = Reopened(*document.Get());
  EXPECT_EQ(opened->GetPIDManager()->GetPIDs().front()->OIDs.size(), 1u) << "on a path, too";
  EXPECT_EQ(opened->GetOIDManager()->QuerySoftID(), 3) << "the lost one's ID is not given again";
  EXPECT_EQ(opened->GetOIDByID(1)->Object, nullptr);
  EXPECT_EQ(zdm::ReferencesOf(opened->GetOIDByID(2)->Object)[0].to->ID, 1);
}

TEST(DocumentFile, AnObjectInNoManagerStaysInTheDocument) {
  auto document = Document::Create();
  IZDMObject* owner = document.Add(OLESTR("Owner"));
  const ZRefPtr<IZDMObject> stray = document.Add(OLESTR("Stray"));
  document->RemoveItem(stray);
  stray->SetOwner(owner);
  auto opened = Reopened(*document.Get());
  ASSERT_EQ(opened->GetStrays().size(), 1u);
  EXPECT_EQ(NameOf(opened->GetStrays()[0]), "Stray");
}

TEST(DocumentFile, RecordsFillStreamsOfBoundedSize) {
  auto document = Document::Create();
  IZDMObjMgr* walls = document.AddManager(OLESTR("Walls"));
  const std::basic_string<OLECHAR> text(500, OLESTR('x'));
  const std::basic_string<OLECHAR> huge(zdm::kChunkSize, OLESTR('y'));
  for (int i = 0; i < 2500; ++i) document.Add(i == 1100 ? huge : text, walls);
  auto opened = Reopened(*document.Get());
  const zdm::DocumentInfo info = zdm::DocumentReader(document->GetPath()).GetInfo();
  EXPECT_EQ(info.objects, 2501u + kDefaults);
  EXPECT_EQ(info.ids, 2501u + kDefaults);
  EXPECT_EQ(info.chunks, 5u) << "two full ones, the huge record, the rest";
  EXPECT_GT(info.largestRecord, 2 * zdm::kChunkSize);
  EXPECT_EQ(info.highestId, 2501);
  EXPECT_EQ(NamesIn(*opened, 1).size(), 2499 * 501 + zdm::kChunkSize + 1);
}

/// Every byte that a stream holds is covered by a checksum. The leak checker sees whether objects
/// end that were read before the damage.
TEST(DocumentFile, WhatIsNoSoundDocumentIsRefused) {
  auto document = Document::Create(OLESTR("Zq"));
  document.Add(OLESTR("Door"));
  document.Save(TempFile("sound.zdm"));
  EXPECT_EQ(FaultOf(TempFile("absent.zdm")), DocumentFault::kNotFound);
  EXPECT_EQ(FaultOf(document->GetPath().parent_path()), DocumentFault::kNoAccess);
  const auto other = TempFile("other.zdm");
  for (const Bytes& bytes : {Bytes(), Bytes(5000, 'a')}) {
    WriteFileBytes(other, bytes);
    EXPECT_EQ(FaultOf(other), DocumentFault::kNotDocument);
  }
  for (const Bytes& name : {Hex("44006F006F007200"), Hex("5A007100")}) {
    Bytes damaged = FileBytes(document->GetPath());
    const auto found = std::find_end(damaged.begin(), damaged.end(), name.begin(), name.end());
    ASSERT_NE(found, damaged.end());
    *found ^= 1;
    WriteFileBytes(other, damaged);
    EXPECT_EQ(FaultOf(other), DocumentFault::kDamaged) << found - damaged.begin();
  }
}

/// The leak checker sees what does not end.
TEST(DocumentFile, ManagersInARingEndWithTheDocument) {
  auto document = Document::Create();
  IZDMObjMgr* outer = document.AddManager(OLESTR("Outer"));
  IZDMObjMgr* inner = document.AddManager(OLESTR("Inner"), outer);
  inner->AttachTail(outer);
  document->RemoveItem(outer);
  document.Save(TempFile("ring.zdm"));
  auto opened = CZDocument::Open(document->GetPath());
  EXPECT_EQ(opened->GetOIDManager()->GetValidOIDCount(), 2 + kDefaults);
}

TEST(DocumentFile, SavingThatFailsLeavesTheFileAlone) {
  class Failing : public CZDMPlainObject {
    void SaveOwnData(IZStream*, IZDatabase*) override { throw CAtlException(E_FAIL); }
  };
  auto document = Document::Create();
  document.Save(TempFile("kept.zdm"));
  const auto path = document->GetPath();
  const auto before = FileBytes(path);
  const auto files = FileCount(path.parent_path());
  EXPECT_THROW(document->SaveAs(path.parent_path() / "no-such-folder" / "x.zdm"), DocumentError);
  EXPECT_EQ(document->GetPath(), path);
  document.Add(zdm::MakeObject<IZDMObject, Failing>(), nullptr);
  EXPECT_THROW(document->Save(), CAtlException);
  EXPECT_EQ(FileBytes(path), before);
  EXPECT_EQ(FileCount(path.parent_path()), files) << "no half file is left behind";
}

}  // namespace
