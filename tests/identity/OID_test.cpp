// What an object's record holds, and what of it a stream carries.
#include "zdm/identity/OID.h"

#include "tests/identity/Records.h"
#include "tests/support/Cuts.h"

#include <stdexcept>

namespace {

using namespace zdm::test;

TEST(OID, HasStatusBits0To63AndRefusesOthers) {
  OID record;
  record.SetStatus(0, 0);
  record.SetStatus(63, 0);
  EXPECT_TRUE(record.JudgeStatus(0));
  EXPECT_TRUE(record.JudgeStatus(63));
  record.ClearStatus(63, 0);
  EXPECT_EQ(record.Status.to_ullong(), 1U);
  for (const LONG bit : {-1, 64, 1 << 30}) {
    EXPECT_THROW(record.SetStatus(bit, 0), std::out_of_range) << bit;
    EXPECT_THROW(record.ClearStatus(bit, 0), std::out_of_range) << bit;
    EXPECT_THROW(static_cast<void>(record.JudgeStatus(bit)), std::out_of_range) << bit;
  }
  try {
    record.SetStatus(64, 0);
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), "invalid bitset<N> position");
  }
}

TEST(OIDStream, DropsTheFirstWordWrittenAsZero) {
  OID saved(11, 22, -3, nullptr);
  const auto bytes = Written([&](IZStream* stream) { saved.Save(stream); });
  EXPECT_EQ(bytes, Words({0, 22, -3}));

  OID loaded(99, 0, 0, nullptr);
  ByteStream stream(Words({5, 22, -3}));
  loaded.Load(&stream);
  EXPECT_EQ(loaded.AuxWord1, 99);
  EXPECT_EQ(loaded.AuxWord2, 22);
  EXPECT_EQ(loaded.ID, -3);
}

TEST(OIDStream, KeepsTheRecordWhenTheStreamEndsEarly) {
  OID record(1, 2, 3, nullptr);
  ExpectShortStreamsThrow(Words({7, 8, 9}), [&](IZStream* stream) { record.Load(stream); });
  EXPECT_EQ(record.AuxWord2, 2);
  EXPECT_EQ(record.ID, 3);
}

}  // namespace
