// Flags that share a word: each operation reaches the bit that is its own.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>

namespace zdm::test {

template <class T>
struct Flag {
  unsigned bit;
  bool (T::*is)();
  void (T::*set)(bool);
};

/// Sets and clears each flag among cleared and among set ones.
/// @param word  answers the word that the flags are in.
template <class T, class Word>
void ExpectFlagsApart(T& object, std::initializer_list<Flag<T>> flags, Word word) {
  for (const bool others : {false, true}) {
    for (const auto& flag : flags) (object.*flag.set)(others);
    const unsigned base = word();
    for (const auto& flag : flags) {
      EXPECT_EQ((object.*flag.is)(), others) << flag.bit;
      (object.*flag.set)(!others);
      EXPECT_EQ((object.*flag.is)(), !others) << flag.bit;
      EXPECT_EQ(word(), base ^ flag.bit);
      (object.*flag.set)(others);
    }
  }
}

}  // namespace zdm::test
