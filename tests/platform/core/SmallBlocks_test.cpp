// Small blocks: what they hold stays apart and goes back; the pages they come from.
#include "platform/core/SmallBlocks.h"

#include "platform/system/Pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <span>
#include <utility>
#include <vector>

namespace {

// Objects of several sizes, in small blocks and of the heap, known by what fills them.
struct Thing : zdm::InSmallBlocks {
  virtual ~Thing() = default;
  virtual std::span<unsigned char> GetBytes() = 0;
  virtual std::size_t GetAlignment() { return 16; }
};

template <std::size_t Size>
struct Sized : Thing {
  std::span<unsigned char> GetBytes() override { return bytes; }
  unsigned char bytes[Size - sizeof(Thing)] = {};
};

struct alignas(64) Strict : Sized<64> {
  std::size_t GetAlignment() override { return alignof(Strict); }
};

std::unique_ptr<Thing> Make(unsigned kind) {
  switch (kind) {
    case 0:
      return std::make_unique<Sized<24>>();
    case 1:
      return std::make_unique<Sized<64>>();
    case 2:
      return std::make_unique<Sized<200>>();
    case 3:
      return std::make_unique<Sized<512>>();
    case 4:
      return std::make_unique<Strict>();
    default:
      return std::make_unique<Sized<600>>();
  }
}

std::size_t CountInUse() {
  std::size_t count = 0;
  for (const zdm::SmallBlockUse& use : zdm::GetSmallBlockUse()) count += use.count;
  return count;
}

// Nothing overlaps and nothing is lost while objects come and go in any order, over many pages.
TEST(SmallBlocks, KeepObjectsApart) {
  const std::size_t before = CountInUse();
  std::mt19937 random(7);
  std::vector<std::pair<std::unique_ptr<Thing>, unsigned char>> things;
  for (int step = 0; step < 60000; ++step) {
    if (things.size() < 4000 || random() % 2 == 0) {
      const auto mark = static_cast<unsigned char>(random());
      auto thing = Make(static_cast<unsigned>(random() % 6));
      ASSERT_EQ(reinterpret_cast<std::uintptr_t>(thing.get()) % thing->GetAlignment(), 0u);
      std::ranges::fill(thing->GetBytes(), mark);
      things.emplace_back(std::move(thing), mark);
    } else {
      std::swap(things[random() % things.size()], things.back());
      const auto& [thing, mark] = things.back();
      for (const unsigned char byte : thing->GetBytes()) ASSERT_EQ(byte, mark);
      things.pop_back();
    }
  }
  things.clear();
  EXPECT_EQ(CountInUse(), before);
}

// Pages whose blocks all came back go back, but for the one that is being filled.
TEST(SmallBlocks, LieInTheOrderOfTheirMakingAndGiveTheirPagesBack) {
  constexpr std::size_t kCount = 20000;
  const std::size_t before = zdm::CountBlockPages();
  std::vector<std::unique_ptr<Thing>> things;
  for (std::size_t i = 0; i < kCount; ++i) things.push_back(Make(static_cast<unsigned>(i % 4)));
  if (zdm::CountBlockPages() == 0) GTEST_SKIP() << "blocks are of the heap here";
  std::size_t neighbours = 0;
  for (std::size_t i = 1; i < kCount; ++i) {
    const auto place = [&](std::size_t at) {
      return reinterpret_cast<std::uintptr_t>(&*things[at]);
    };
    const std::size_t distance = place(i) - place(i - 1);
    if (distance > 0 && distance <= 512) ++neighbours;
  }
  EXPECT_GT(neighbours, kCount * 9 / 10);
  std::ranges::shuffle(things, std::mt19937(5));
  things.clear();
  EXPECT_LE(zdm::CountBlockPages(), before + 1);
}

TEST(SmallBlocks, PagesBeginAtMultiplesOfTheirSizeAndAreZero) {
  std::vector<void*> pages;
  for (int i = 0; i < 200; ++i) {
    auto* page = static_cast<unsigned char*>(zdm::TakePage());
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(page) % zdm::kPageSize, 0u);
    EXPECT_EQ(page[0] | page[zdm::kPageSize - 1], 0);
    std::memset(page, 0xEE, zdm::kPageSize);
    pages.push_back(page);
  }
  for (void* page : pages) zdm::GiveBackPage(page);
}

}  // namespace
