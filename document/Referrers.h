// Who refers to whom, by IDs, as it stands: for many questions in a row, each of which costs little
// more than going through its answer. Borrowed from the document (Document::GetReferrers) until
// anything in it changes, also a status or a parameter's target, or it ends.
#pragma once

#include "document/Adjacency.h"

#include <cstddef>
#include <iterator>
#include <span>

namespace zdm {

class ReferenceIndex;

class Referrers {
 public:
  /// IDs, each once, in no particular order.
  class IDs {
   public:
    class Iterator {
     public:
      using value_type = LONG;
      using difference_type = std::ptrdiff_t;
      using reference = LONG;
      using pointer = void;
      using iterator_concept = std::forward_iterator_tag;
      using iterator_category = std::input_iterator_tag;

      Iterator() = default;
      Iterator(const IDs& list, std::size_t at) : slots_(list.slots_), ids_(list.ids_), at_(at) {}
      LONG operator*() const { return ids_[slots_[at_]]; }
      Iterator& operator++() {
        ++at_;
        return *this;
      }
      Iterator operator++(int) {
        const Iterator former = *this;
        ++at_;
        return former;
      }
      bool operator==(const Iterator& other) const { return at_ == other.at_; }

     private:
      const ULONG* slots_ = nullptr;
      const LONG* ids_ = nullptr;
      std::size_t at_ = 0;
    };

    IDs(std::span<const ULONG> slots, const LONG* ids)
        : slots_(slots.data()), ids_(ids), count_(slots.size()) {}
    Iterator begin() const { return {*this, 0}; }
    Iterator end() const { return {*this, count_}; }
    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }

   private:
    const ULONG* slots_;
    const LONG* ids_;
    std::size_t count_;
  };

  /// The valid objects that refer to the object of that ID; none for an ID that is not listed.
  IDs Of(LONG id) const {
    const auto place = static_cast<ULONGLONG>(LONGLONG{id} - firstID_);
    const ULONG slot = place < near_.size() ? near_[place] : kNoSlot;
    return slot != kNoSlot ? ListOf(slot) : Far(id);
  }

 private:
  friend class ReferenceIndex;
  static constexpr ULONG kNoSlot = ~ULONG{0};

  explicit Referrers(const ReferenceIndex& index);

  IDs ListOf(ULONG slot) const { return {lists_[slot], ids_}; }
  IDs Far(LONG id) const;

  const ReferenceIndex& index_;
  const Adjacency& lists_;  // by slots, whose IDs are `ids_`
  const LONG* ids_;
  LONGLONG firstID_;
  std::span<const ULONG> near_;  // the slots of the IDs from there on
};

}  // namespace zdm
