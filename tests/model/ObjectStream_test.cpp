// The stored form of data-model objects: header, body, and what damage does to an object.
#include "platform/ole/CAtlException.h"
#include "tests/model/ModelSupport.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/UIDReltn.h"
#include "zdm/identity/CID.h"
#include "zdm/module/DllRegisterZModule.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

using namespace zdm::test;

namespace {

constexpr GUID kKey = {1, 0, 0, {}};
constexpr std::size_t kMask = 33;  // offset of the option mask
constexpr std::size_t kBody = 41;  // offset of the body's length

class ObjectStream : public testing::Test {
 protected:
  ObjectStream() {
    DllRegisterZModule();
    UIDReltn::zInit();
  }

  /// An object with one item, one relation and one parameter, to `target`.
  ZRefPtr<IZDMObject> MakeFull(IZDMObject* target, const OLECHAR* name) {
    auto object = db.MakeObject(name);
    object->SetExtData(kKey, MakeItem(OLESTR("item")));
    object->AddRelation(RelationTo(target));
    object->SetParameterArray(ParametersTo(target), false);
    return object;
  }

  TestDatabase db;
};

TEST_F(ObjectStream, HeaderAndEmptyBody) {
  auto object = db.MakeObject(nullptr, 0x01020304);
  object->GetOID()->AuxWord1 = 0x11121314;
  object->GetOID()->AuxWord2 = 0x21222324;
  object->SetOptionAllowed(static_cast<LONGLONG>(0xF230FA2000000001));
  EXPECT_EQ(BytesOf(*object, &db),
            Hex("066AC6BAEBE7B1428755E0E8AC0AC5A1 14131211 24232221 "  // class, carried words
                "04030201 FFFFFFFF 01 0100000020FA30F2 "               // IDs, type, option mask
                "07000000 000000 00000000"));  // length, nothing attached, no name
}

TEST_F(ObjectStream, BodyHoldsAttachmentsInOrderThenOwnData) {
  auto target = db.MakeObject(nullptr, 0x77);
  auto object = MakeFull(target, OLESTR("w"));
  const Bytes bytes = BytesOf(*object, &db);
  const Bytes expected =
      Hex("01 01000000 01000000000000000000000000000000 "  // a group, its key
          "01000000 00 0A0000006900740065006D000000 "      // an item
          "01 01000000 56E4F869A823F94BA7655CCF27951F72 "  // a relation
          "00008000 FFFFFFFF 00000000 77000000 "           //
          "01 00 01000000 0A00 FFFF 00 00 03 "             // a parameter
          "00008000 FFFFFFFF 00000000 77000000 "           //
          "04000000 77000000");                            // the name
  EXPECT_EQ(Bytes(bytes.begin() + kBody + 4, bytes.end()), expected);
  EXPECT_EQ(NumberAt(bytes, kBody), static_cast<LONG>(expected.size()));
}

TEST_F(ObjectStream, SavesBehindWhatTheStreamHolds) {
  auto object = db.MakeObject(OLESTR("wall"));
  const Bytes once = BytesOf(*object, &db);
  zdm::test::ByteStream stream;
  object->Save(&stream, &db);
  object->Save(&stream, &db);
  EXPECT_EQ(stream.GetBytes(), Join({once, once}));
}

TEST_F(ObjectStream, LoadBringsBackMaskAttachmentsAndOwnData) {
  auto target = db.MakeObject(nullptr, 0x77);
  auto object = MakeFull(target, OLESTR("wall"));
  object->SetOptionAllowed(0x1234);
  const std::vector<BYTE> bytes = BytesOf(*object, &db);

  auto loaded = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  EXPECT_EQ(LoadBytes(*loaded, bytes, &db), bytes.size());
  EXPECT_EQ(loaded->GetOptionAllowed(), 0x1234);
  EXPECT_EQ(NameOf(*loaded), "wall");
  EXPECT_NE(loaded->GetExtData(kKey, OLESTR("item")), nullptr);
  EXPECT_EQ(IDsOffered(*loaded), "- 119 119 ");
  EXPECT_EQ(loaded->PeekParameterArray()->GetOwner(), loaded.Get());
  // Identity is for whoever made the object.
  EXPECT_EQ(loaded->GetID(), 0u);
  EXPECT_EQ(loaded->GetOwnerOID(), nullptr);
  EXPECT_FALSE(loaded->IsObjectValid());
}

TEST_F(ObjectStream, LoadingAgainReplacesRelationsAndClearsTheRest) {
  auto target = db.MakeObject(nullptr, 0x77);
  const std::vector<BYTE> bytes = BytesOf(*MakeFull(target, OLESTR("wall")), &db);
  auto object = MakeFull(db.MakeObject(nullptr, 0x88), OLESTR("roof"));
  object->SetExtData(kKey, MakeItem(OLESTR("old")));
  IZExtDataMgr* manager = object->GetExtDataMgr();
  IZParameterArray* array = object->PeekParameterArray();
  EXPECT_EQ(LoadBytes(*object, bytes, &db), bytes.size());
  EXPECT_EQ(IDsOffered(*object), "-1 119 119 ");
  EXPECT_EQ(object->GetExtDataMgr(), manager);
  EXPECT_EQ(object->PeekParameterArray(), array);
  EXPECT_EQ(object->GetExtData(kKey, OLESTR("old")), nullptr);
  EXPECT_NE(object->GetExtData(kKey, OLESTR("item")), nullptr);
}

TEST_F(ObjectStream, ARecordWithoutAttachmentsTakesNoneAway) {
  const std::vector<BYTE> bytes = BytesOf(*db.MakeObject(OLESTR("wall")), &db);
  auto object = MakeFull(db.MakeObject(nullptr, 0x88), OLESTR("roof"));
  EXPECT_EQ(LoadBytes(*object, bytes, &db), bytes.size());
  EXPECT_EQ(NameOf(*object), "wall");
  EXPECT_EQ(IDsOffered(*object), "-1 136 136 ");
  EXPECT_NE(object->GetExtData(kKey, OLESTR("item")), nullptr);
}

TEST_F(ObjectStream, FlagsAreAnyByteForExtendedDataAndExactlyOneElsewhere) {
  std::vector<BYTE> bytes = BytesOf(*db.MakeObject(), &db);
  bytes[kBody + 5] = 2;     // relations
  bytes[kBody + 6] = 0xFF;  // parameters
  auto loaded = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
  EXPECT_EQ(LoadBytes(*loaded, bytes, &db), bytes.size());
  EXPECT_EQ(loaded->GetReltnColl(), nullptr);
  EXPECT_EQ(loaded->PeekParameterArray(), nullptr);

  bytes[kBody + 4] = 2;                                   // extended data
  bytes.insert(bytes.begin() + kBody + 5, {0, 0, 0, 0});  // no group
  EXPECT_EQ(LoadBytes(*loaded, bytes, &db), bytes.size());
  EXPECT_NE(loaded->GetExtDataMgr(), nullptr);
}

// Wherever the stream ends, a new object keeps what was read, and an object with content keeps
// either the old or the new of each part.
TEST_F(ObjectStream, AStreamCutAnywhereIsAnErrorAndLosesNothing) {
  auto target = db.MakeObject(nullptr, 0x77);
  const std::vector<BYTE> bytes = BytesOf(*MakeFull(target, OLESTR("wall")), &db);
  auto former = db.MakeObject(nullptr, 0x88);
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    SCOPED_TRACE(size);
    const Bytes cut = Cut(bytes, size);
    auto fresh = zdm::MakeObject<IZDMObject, CZDMPlainObject>();
    EXPECT_THROW(LoadBytes(*fresh, cut, &db), CAtlException);
    EXPECT_EQ(NameOf(*fresh), "-");

    auto object = MakeFull(former, OLESTR("roof"));
    EXPECT_THROW(LoadBytes(*object, cut, &db), CAtlException);
    EXPECT_EQ(NameOf(*object), "roof");
    EXPECT_NE(object->GetExtData(kKey, OLESTR("item")), nullptr);
    const std::string offered = IDsOffered(*object);
    EXPECT_TRUE(offered == "-1 136 136 " || offered == "-1 136 119 " || offered == "-1 119 119 ")
        << offered;
  }
}

// Of the header the option mask alone is believed. A damaged body loads or throws; either way the
// object can be saved, and what it saves loads to the same again.
TEST_F(ObjectStream, EveryDamagedByteIsSurvived) {
  const zdm::CapturedOutput output;  // unknown types of values are reported
  auto target = db.MakeObject(nullptr, 0x77);
  const std::vector<BYTE> bytes = BytesOf(*MakeFull(target, OLESTR("wall")), &db);
  auto intact = db.MakeObject();
  LoadBytes(*intact, bytes, &db);
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    for (const int damage : {0x01, 0x80, 0xFF}) {
      SCOPED_TRACE(testing::Message() << "byte " << at << " by " << damage);
      std::vector<BYTE> damaged = bytes;
      damaged[at] = static_cast<BYTE>(damaged[at] ^ damage);
      auto object = db.MakeObject();
      object->SetID(intact->GetID());
      bool loads = true;
      try {
        LoadBytes(*object, damaged, &db);
      } catch (const CAtlException&) {
        loads = false;
      }
      const std::vector<BYTE> saved = BytesOf(*object, &db);
      if (at < kMask || (at >= kBody && at < kBody + 4)) {
        EXPECT_TRUE(loads);
        EXPECT_EQ(saved, BytesOf(*intact, &db));
      }
      auto again = db.MakeObject();
      again->SetID(intact->GetID());
      EXPECT_EQ(LoadBytes(*again, saved, &db), saved.size());
      EXPECT_EQ(BytesOf(*again, &db), saved);
    }
  }
}

// Every ID in the saved bytes of an object is offered to a visitor, and nothing else. The IDs are
// canaries: numbers that occur nowhere else in the bytes.
TEST_F(ObjectStream, OffersExactlyTheIDsItSaves) {
  constexpr LONG kCanary = 0x5AC30000;
  std::vector<ZRefPtr<IZDMObject>> objects;
  for (LONG i = 1; i <= 8; ++i) objects.push_back(db.MakeObject(nullptr, kCanary + i));
  const auto at = [&](LONG i) { return objects[static_cast<std::size_t>(i - 1)].Get(); };

  // Two paths with canaries of their own, which only a stored table can bring.
  zdm::test::ByteStream paths;
  for (const LONG word :
       std::vector<LONG>{2, kCanary + 101, 1, kCanary + 7, kCanary + 102, 1, kCanary + 8}) {
    paths.Write(&word, sizeof(word));
  }
  paths.Seek(0, STREAM_SEEK_SET);
  db.pids.Load(&paths, &db.oids);

  IZDMObject* object = at(1);
  object->SetOwner(at(2));
  object->AddRelation(RelationTo(at(3)));
  auto invalid = RelationTo(at(4));
  invalid->ClearReltnStatus(ZRS_VALID);
  object->AddRelation(invalid);
  auto nested = zdm::Attached(new UIDReltn);
  nested->uid.CID = new CID(db.pids.GetPIDByID(kCanary + 101), db.pids.GetPIDByID(kCanary + 102),
                            at(5)->GetOID());
  object->AddRelation(nested);
  object->SetParameterArray(ParametersTo(at(6)), false);
  object->SetExtData(kKey, MakeItem(OLESTR("item")));

  const auto canariesIn = [&](IZDMObject& saved) {
    std::set<LONG> ids;
    const std::vector<BYTE> bytes = BytesOf(saved, &db);
    for (std::size_t offset = 0; offset + 4 <= bytes.size(); ++offset) {
      const LONG id = NumberAt(bytes, offset);
      if (id > kCanary && id < kCanary + 0x1000) ids.insert(id - kCanary);
    }
    return ids;
  };
  std::set<LONG> saved = canariesIn(*object);
  EXPECT_EQ(saved, (std::set<LONG>{1, 2, 3, 5, 6, 101, 102}));
  EXPECT_EQ(saved.erase(1), 1u);  // its own

  std::set<LONG> offered;
  std::string text = IDsOffered(*object);
  std::erase(text, '*');
  std::istringstream words(text);
  for (LONG id; words >> id;) offered.insert(id - kCanary);
  EXPECT_EQ(offered, saved);

  // What was loaded from the bytes offers the same.
  auto loaded = db.MakeObject();
  loaded->SetOwner(at(2));
  LoadBytes(*loaded, BytesOf(*object, &db), &db);
  EXPECT_EQ(IDsOffered(*loaded), IDsOffered(*object));
}

}  // namespace
