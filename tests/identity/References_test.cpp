// Who refers to whom: the order by references, and look-up through the visitors of the factory.
#include "tests/identity/Records.h"
#include "tests/model/ManagerSupport.h"
#include "tests/support/UIDReltn.h"

#include <algorithm>
#include <random>
#include <set>

namespace {

using namespace zdm::test;

class Referring : public testing::Test {
 protected:
  /// New objects with the IDs `ids`, in this order; 0 for the next soft ID.
  void Make(std::initializer_list<LONG> ids) {
    for (const LONG id : ids) {
      objects.push_back(db->MakeObject(nullptr, id));
      records.push_back(objects.back()->GetOID());
    }
  }
  void Clear() {
    objects.clear();
    records.clear();
    db = Document();
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

TEST_F(Sort, LooksIntoPathsButNotAtOwners) {
  Make({1, 2, 3});
  Object(1)->SetOwner(Object(2));
  EXPECT_EQ(Sorted(), (std::vector<LONG>{1, 2, 3}));
  const auto through = zdm::Attached(new UIDReltn);
  through->SetReltnStatus(ZRS_VALID);
  through->uid = UID(db, Object(2)->GetIZObject(), Object(3), nullptr);
  Object(1)->AddRelation(through->GetIZObject());
  EXPECT_EQ(Sorted(), (std::vector<LONG>{2, 3, 1}));
}

TEST_F(Sort, LeavesRecordsWithoutObjectAlone) {
  Make({1, 2});
  Refer(1, 2);
  records.insert(records.begin() + 1, ListRecord(db->oids, 9));
  EXPECT_EQ(Sorted(), (std::vector<LONG>{1, 9, 2}));
}

/// The order that the plain exchange of neighbours gives.
template <class Element, class Greater>
std::vector<Element> Exchanged(std::vector<Element> elements, Greater greater) {
  bool swapped = true;
  for (std::size_t i = 0; i + 1 < elements.size() && swapped; ++i) {
    swapped = false;
    for (std::size_t j = 0; j + 1 < elements.size() - i; ++j) {
      if (!greater(elements[j], elements[j + 1])) continue;
      std::swap(elements[j], elements[j + 1]);
      swapped = true;
    }
  }
  return elements;
}

TEST_F(Sort, ComesOutAsThePlainExchangeOfNeighbours) {
  std::mt19937 random(1);
  for (int graph = 0; graph < 10000; ++graph) {
    // Small graphs of every density, and a few large ones.
    const LONG count = graph % 500 == 0 ? 60 : 2 + static_cast<LONG>(random() % 9);
    const LONG density = static_cast<LONG>(random()) % (2 * count);
    const auto any = [&] { return 1 + static_cast<LONG>(random() % static_cast<ULONG>(count)); };
    Clear();
    for (LONG id = 1; id <= count; ++id) Make({id});
    std::set<std::pair<LONG, LONG>> references;
    for (LONG i = 0; i < density; ++i) {
      const auto [from, to] = *references.emplace(any(), any()).first;
      Refer(from, to);
    }
    std::ranges::shuffle(records, random);
    const std::vector<LONG> expected = Exchanged(IDsOf(records), [&](LONG left, LONG right) {
      return references.contains({left, right}) &&
             (left > right || !references.contains({right, left}));
    });
    if (graph % 10 == 0) {
      ASSERT_EQ(IDsOf(Exchanged(records, COIDManager::IsAGreaterThanB)), expected) << graph;
    }
    const auto coll = MakeObjColl();
    for (const OID* record : records) coll->AddTail(record->Object);
    ZRefPtr<IZDMObjColl> copy;
    coll->GetSortedCopy(copy.Out());
    std::vector<IZDMObject*> copied;
    copy->GetObjects(copied);
    ASSERT_EQ(Sorted(), expected) << "graph " << graph;
    ASSERT_TRUE(std::ranges::equal(copied, records, {}, [](IZDMObject* o) { return o->GetOID(); }))
        << "graph " << graph;
  }
}

TEST_F(Sort, WalksEachObjectTwiceAndPassesOnlyWhereItMust) {
  constexpr LONG kObjects = 20000;  // 2 * 10^8 comparisons if each pass went along the list
  for (LONG id = 1; id <= kObjects; ++id) Make({0});  // the next ID
  const auto relation = zdm::Attached(new UIDReltn);
  relation->SetReltnStatus(ZRS_VALID);
  relation->uid.SetReltnOID(records.back());
  for (LONG id = 1; id < kObjects; ++id) Object(id)->AddRelation(relation->GetIZObject());
  std::vector<LONG> expected = IDsOf(records);
  std::rotate(expected.begin(), expected.end() - 1, expected.end());
  EXPECT_EQ(Sorted(), expected) << "the last goes to the front, one place a pass";
  EXPECT_EQ(relation->walks, 2 * (kObjects - 1)) << "to the first reference, and to all";
}

}  // namespace
