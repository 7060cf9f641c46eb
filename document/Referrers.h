// Who refers to whom, by IDs, as it stands: for many questions in a row, each of which costs little
// more than going through its answer. Borrowed from the document (Document::GetReferrers) until it
// changes or ends.
#pragma once

#include "document/Adjacency.h"

#include <cstddef>
#include <iterator>
#include <span>
#include <utility>

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
      using iterator_category = std::forward_iterator_tag;

      Iterator() = default;
      Iterator(const ULONG* slot, const LONG* ids) : slot_(slot), ids_(ids) {}
      LONG operator*() const { return ids_[*slot_]; }
      Iterator& operator++() {
        ++slot_;
        return *this;
      }
      Iterator operator++(int) { return {std::exchange(slot_, slot_ + 1), ids_}; }
      bool operator==(const Iterator& other) const { return slot_ == other.slot_; }

     private:
      const ULONG* slot_ = nullptr;
      const LONG* ids_ = nullptr;
    };

    IDs(std::span<const ULONG> slots, const LONG* ids) : slots_(slots), ids_(ids) {}
    Iterator begin() const { return {slots_.data(), ids_}; }
    Iterator end() const { return {slots_.data() + slots_.size(), ids_}; }
    std::size_t size() const { return slots_.size(); }
    bool empty() const { return slots_.empty(); }

   private:
    std::span<const ULONG> slots_;
    const LONG* ids_;
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
