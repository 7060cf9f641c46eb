// For those who remember what objects hold, such as an index of references. While a watcher looks
// at something, everything it comes through says Watch and is marked with the watcher's number;
// when a marked thing changes what it holds, or ends, it says Changed, and every watcher hears the
// number. So a class that holds references says Watch where it offers them and Changed where they
// change. Without a mark both cost a comparison.
#pragma once

#include "platform/core/CZObject.h"

namespace zdm {

class ZDM_API ChangeWatch {
 public:
  /// What something is marked with that was met under two numbers.
  static constexpr ULONG kSeveral = 0xFFFFFFFF;

  /// While it lives, what says Watch is marked with `number`, 1 or more. Looks do not nest.
  class Look {
   public:
    explicit Look(ULONG number) { number_ = number; }
    ~Look() { number_ = 0; }
    Look(const Look&) = delete;
    Look& operator=(const Look&) = delete;
  };

  static void Watch(CZObject& thing) { Watch(thing.watch_); }
  /// For a part of something that is no object itself; it keeps `mark`, 0 at first.
  static void Watch(ULONG& mark) {
    if (number_ != 0 && mark != number_) mark = mark == 0 ? number_ : kSeveral;
  }
  static void Changed(const CZObject& thing) { Changed(thing.watch_); }
  static void Changed(ULONG mark) {
    if (mark != 0) Tell(mark);
  }

  ChangeWatch(const ChangeWatch&) = delete;
  ChangeWatch& operator=(const ChangeWatch&) = delete;

 protected:
  ChangeWatch();
  virtual ~ChangeWatch();
  /// Something marked with `number` changed, perhaps a mark of another watcher's. It may be half
  /// gone: a watcher only takes note.
  virtual void OnChanged(ULONG number) = 0;

 private:
  static void Tell(ULONG number);

  static ULONG number_;
  static ChangeWatch* first_;
  ChangeWatch* next_;
};

}  // namespace zdm
