// Walks over references of references, depth first, without recursion: instead of being entered at
// once, what an object offers is gathered, and then taken up in the order in which it was offered,
// so that objects are entered in the order of the recursion. The stack of calls stays as it is for
// one object; the list holds a step for each reference not decided yet.
#pragma once

#include <algorithm>
#include <vector>

namespace zdm {

template <class Step>
class WalkStack {
 public:
  WalkStack() = default;
  // The walk that goes on is its visitor's own: copies of the visitor start without one.
  WalkStack(const WalkStack&) {}
  WalkStack& operator=(const WalkStack&) { return *this; }
  ~WalkStack() = default;

  /// Whether an object is offering: what it offers is to be pushed, not to be walked.
  bool IsGathering() const { return gathering_; }
  bool IsEmpty() const { return steps_.empty(); }
  /// Begins a walk; what one that threw has left goes.
  void Start(const Step& step) { steps_.assign(1, step); }
  void Push(const Step& step) { steps_.push_back(step); }
  Step& Top() { return steps_.back(); }
  void Pop() { steps_.pop_back(); }

  /// Runs `offer`; of the steps pushed by it, the first is on top afterwards.
  template <class Offer>
  void Gather(Offer offer) {
    const auto before = static_cast<std::ptrdiff_t>(steps_.size());
    gathering_ = true;
    try {
      offer();
    } catch (...) {
      gathering_ = false;
      throw;
    }
    gathering_ = false;
    std::reverse(steps_.begin() + before, steps_.end());
  }

 private:
  std::vector<Step> steps_;
  bool gathering_ = false;
};

}  // namespace zdm
