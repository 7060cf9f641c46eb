// Groups of a drawing file: a code and the text of its value, byte by byte as written. A list keeps
// them in one block of bytes, in order. Stream form: above Save in GroupList.cpp.
#pragma once

#include "platform/ole/ole.h"

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

struct IZStream;

namespace zdm {

struct Group {
  LONG code = 0;
  std::string_view text;  // without line end; borrowed

  bool operator==(const Group&) const = default;
};

class GroupList {
 public:
  /// The groups read one after the other; what a list holds must not change meanwhile.
  class Iterator {
   public:
    explicit Iterator(const char* at) : at_(at) {}
    Group operator*() const {
      LONG code;
      ULONG size;
      std::memcpy(&code, at_, sizeof(code));
      std::memcpy(&size, at_ + sizeof(code), sizeof(size));
      return {code, {at_ + kHead, size}};
    }
    Iterator& operator++() {
      at_ += kHead + (**this).text.size();
      return *this;
    }
    bool operator==(const Iterator&) const = default;

   private:
    const char* at_;
  };

  /// Throws CAtlException(E_FAIL) for a text that is too long for a stream.
  void Append(const Group& group);
  void Clear() { *this = {}; }
  /// Gives back what was taken in advance.
  void Settle() { bytes_.shrink_to_fit(); }

  ULONG Count() const { return count_; }
  bool IsEmpty() const { return count_ == 0; }
  Iterator begin() const { return Iterator(bytes_.data()); }
  Iterator end() const { return Iterator(bytes_.data() + bytes_.size()); }

  /// All of them; the texts are borrowed from the list.
  std::vector<Group> All() const;
  /// The text of the first group of that code; empty without one.
  std::string_view Find(LONG code) const;
  /// Its place, from 0; Count() without one.
  ULONG IndexOf(LONG code) const;
  /// A copy in which the group at `index` has another text.
  GroupList With(ULONG index, std::string_view text) const;

  void Save(IZStream* stream) const;
  /// Damage throws CAtlException(E_FAIL), and nothing changes.
  void Load(IZStream* stream);

  bool operator==(const GroupList&) const = default;

 private:
  static constexpr std::size_t kHead = sizeof(LONG) + sizeof(ULONG);

  std::string bytes_;  // code, size, text of each
  ULONG count_ = 0;
};

}  // namespace zdm
