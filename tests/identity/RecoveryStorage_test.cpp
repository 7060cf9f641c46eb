// Objects read back from all streams of a compound file.
#include "tests/identity/RecoverySupport.h"
#include "tests/platform/ole/StorageSupport.h"

namespace {

using namespace zdm::test;
using IDs = std::vector<LONG>;

constexpr LONG kOwner = Target::kManager;

TEST(ReadStorage, ReadsEveryStreamOfTheTree) {
  const Storage root = CreateAt(FreshPath("tree"));
  AddStream(root.Get(), OLESTR("a"), Plain(10, kOwner));
  {
    const Storage inner = AddStorage(root.Get(), OLESTR("b"));
    AddStream(inner.Get(), OLESTR("x"), Bytes(100));  // nothing but zeros
    AddStream(inner.Get(), OLESTR("y"), Plain(11, kOwner));
  }
  AddStream(root.Get(), OLESTR("c"), Plain(12, kOwner) + Plain(13, kOwner));
  Target target({10, 11, 12, 13});
  EXPECT_EQ(target.database->oids.ReadStorage(root.Get()), 1);
  EXPECT_EQ(target.Attached(), (IDs{10, 11, 12, 13}));
}

TEST(ReadStorage, AnswersOneForAnEmptyTree) {
  Target target;
  EXPECT_EQ(target.database->oids.ReadStorage(CreateAt(FreshPath("empty")).Get()), 1);
}

TEST(ReadStorage, LeavesOutWhatIsInUse) {
  const Storage root = CreateAt(FreshPath("busy"));
  AddStream(root.Get(), OLESTR("a"), Plain(10, kOwner));
  AddStream(root.Get(), OLESTR("b"), Plain(11, kOwner));
  const Stream open = OpenStream(root.Get(), OLESTR("a"));
  Target target;
  EXPECT_EQ(target.database->oids.ReadStorage(root.Get()), 1);
  EXPECT_EQ(target.Attached(), (IDs{11}));
}

TEST(ReadStorage, DepthIsBounded) {
  const Storage root = CreateAt(FreshPath("deep"));
  std::vector<Storage> levels = {root};
  for (int depth = 1; depth < 300; ++depth) {
    levels.push_back(AddStorage(levels.back().Get(), OLESTR("s")));
    if (depth == 255) AddStream(levels.back().Get(), OLESTR("t"), Plain(10, kOwner));
    if (depth == 256) AddStream(levels.back().Get(), OLESTR("t"), Plain(11, kOwner));
  }
  while (levels.size() > 1) levels.pop_back();
  Target target;
  EXPECT_EQ(target.database->oids.ReadStorage(root.Get()), 1);
  EXPECT_EQ(target.Attached(), (IDs{10}));
}

}  // namespace
