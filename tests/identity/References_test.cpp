// Who refers to whom: the order by references, and look-up through the visitors of the factory.
#include "tests/identity/Document.h"
#include "tests/identity/Records.h"

#include <algorithm>
#include <random>
#include <set>

namespace {

using namespace zdm::test;

class Referring : public testing::Test {
 protected:
  /// New objects with the IDs `ids`, in this order.
  void Make(std::initializer_list<LONG> ids) {
    for (const LONG id : ids) {
      objects.push_back(db->MakeObject(nullptr, id));
      records.push_back(objects.back()->GetOID());
    }
  }
  void Refer(LONG from, LONG to) {
    Object(from)->AddRelation(RelationTo(Object(to))->GetIZObject());
  }
  IZDMObject* Object(LONG id) { return db->GetOIDByID(id)->Object; }
  std::vector<LONG> Sorted() {
    COIDManager::Sort(records);
    return IDsOf(records);
  }

  Document db;
  std::vector<ZRefPtr<IZDMObject>> objects;
  std::vector<OID*> records;
};

using Sort = Referring;

TEST_F(Sort, PutsAnObjectBehindItsTarget) {
  Make({1, 2});
  Refer(1, 2);
  EXPECT_EQ(Sorted(), (std::vector<LONG>{2, 1}));
}

TEST_F(Sort, PutsTheLowerIDFirstWhereBothRefer) {
  Make({1, 2});
  Refer(1, 2);
  Refer(2, 1);
  EXPECT_EQ(Sorted(), (std::vector<LONG>{1, 2}));
  std::ranges::reverse(records);
  EXPECT_EQ(Sorted(), (std::vector<LONG>{1, 2}));
}

TEST_F(Sort, ExchangesNeighboursOnly) {
  Make({1, 2, 3});
  Refer(1, 3);
  EXPECT_EQ(Sorted(), (std::vector<LONG>{1, 2, 3})) << "1 and 3 never meet";
  Refer(2, 3);
  EXPECT_EQ(Sorted(), (std::vector<LONG>{3, 1, 2})) << "now 2 makes way";
}

TEST_F(Sort, LooksIntoPathsButNotAtOwners) {
  Make({1, 2});
  Object(1)->SetOwner(Object(2));
  EXPECT_EQ(Sorted(), (std::vector<LONG>{1, 2}));
}

TEST_F(Sort, LeavesRecordsWithoutObjectAlone) {
  Make({1, 2});
  Refer(1, 2);
  records.insert(records.begin() + 1, ListRecord(db->oids, 9));
  EXPECT_EQ(Sorted(), (std::vector<LONG>{1, 9, 2}));
}

TEST_F(Sort, ComesOutAsThePlainExchangeOfNeighbours) {
  constexpr LONG kObjects = 40;
  for (const unsigned seed : {1U, 2U, 3U}) {
    std::mt19937 random(seed);
    db->oids.Init();
    records.clear();
    std::set<std::pair<LONG, LONG>> references;
    for (LONG id = 1; id <= kObjects; ++id) Make({id});
    for (int i = 0; i < 150; ++i) {
      const auto from = 1 + static_cast<LONG>(random() % kObjects);
      const auto to = 1 + static_cast<LONG>(random() % kObjects);
      references.emplace(from, to);
      Refer(from, to);
    }
    std::ranges::shuffle(records, random);

    std::vector<LONG> expected = IDsOf(records);
    bool swapped = true;
    for (std::size_t i = 0; i + 1 < expected.size() && swapped; ++i) {
      swapped = false;
      for (std::size_t j = 0; j + 1 < expected.size() - i; ++j) {
        LONG& left = expected[j];
        LONG& right = expected[j + 1];
        if (!references.contains({left, right})) continue;
        if (references.contains({right, left}) && left <= right) continue;
        std::swap(left, right);
        swapped = true;
      }
    }
    EXPECT_EQ(Sorted(), expected) << "seed " << seed;
  }
}

}  // namespace
