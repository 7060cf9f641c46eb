// The entries of a chooser: keys with a label each, in order, and one cursor to walk them.
#pragma once

#include "platform/ole/Bstr.h"
#include "zdm/framework/CZAtlList.h"

namespace zdm {

template <class Key>
class LabelledEntries {
 public:
  void Add(Key key, Bstr label) { entries_.AddTail({key, std::move(label)}); }
  void Add(const LabelledEntries& others) { entries_.AddTailList(&others.entries_); }
  void RemoveAll() {
    entries_.RemoveAll();
    cursor_ = nullptr;
  }
  ULONG GetCount() const { return static_cast<ULONG>(entries_.GetCount()); }

  /// Puts the cursor on the first entry. Throws CAtlException(E_FAIL) when there is none.
  /// @param label  a copy for the caller.
  void GetFirst(Key* key, BSTR* label) {
    entries_.GetAt(entries_.GetHeadPosition());
    cursor_ = entries_.GetHeadPosition();
    Get(key, label);
  }
  /// Moves the cursor on. False and a null label past the last entry and until GetFirst is called.
  bool GetNext(Key* key, BSTR* label) {
    *label = nullptr;
    if (cursor_ != nullptr) entries_.GetNext(cursor_);
    if (cursor_ == nullptr) return false;
    Get(key, label);
    return true;
  }
  /// A copy of the label of the first entry whose key `matches`; false and null if none.
  template <class Matches>
  bool FindLabel(Matches matches, BSTR* label) {
    *label = nullptr;
    for (POSITION pos = entries_.GetHeadPosition(); pos != nullptr;) {
      const Entry& entry = entries_.GetNext(pos);
      if (!matches(entry.key)) continue;
      entry.label.CopyTo(label);
      return true;
    }
    return false;
  }
  template <class Visit>
  void ForEach(Visit visit) {
    for (POSITION pos = entries_.GetHeadPosition(); pos != nullptr;) {
      const Entry& entry = entries_.GetNext(pos);
      visit(entry.key, entry.label);
    }
  }

 private:
  struct Entry {
    Key key = {};
    Bstr label;  // may be null
  };

  void Get(Key* key, BSTR* label) const {
    const Entry& entry = entries_.GetAt(cursor_);
    entry.label.CopyTo(label);
    *key = entry.key;
  }

  CZAtlList<Entry> entries_;
  POSITION cursor_ = nullptr;  // the entry shown last
};

}  // namespace zdm
