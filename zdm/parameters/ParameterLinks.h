// Links between parameters. A link is followed to its end in one loop, so that a long chain needs
// no stack. Meanwhile every parameter on the way ignores its own link: a parameter that is met
// again, there or in a call from outside, answers with its own value, and rings end.
#pragma once

#include "zdm/model/IZDMObject.h"
#include "zdm/parameters/IZDMParameter.h"
#include "zdm/parameters/ParameterTarget.h"

#include <utility>
#include <vector>

namespace zdm {

/// The part of a parameter that has to do with other objects; every parameter built on
/// IZParameterImpl has this base. It is no interface of the framework: dynamic_cast reaches it,
/// queries do not.
class ZDM_INTERFACE ParameterLinks {
 protected:
  /// Whether there is a relation for it, with or without a target.
  bool HasLink() const { return link_.GetReltn() != nullptr; }

  // Whether changes spread along them.
  static constexpr bool kDefinitionDiffusible = true;
  static constexpr bool kLinkDiffusible = false;

  ParameterTarget definition_;
  ParameterTarget link_;

 private:
  template <class View>
  friend class LinkWalk;
  friend class LentDefinition;
  bool ignoresLink_ = false;
};

/// Follows links as long as it lives.
/// @tparam View  what a parameter must answer to for a link to it to be followed.
template <class View>
class LinkWalk {
 public:
  /// @param goesThrough  says of a parameter on the way whether its own link is followed.
  template <class GoesThrough>
  LinkWalk(ParameterLinks& start, GoesThrough goesThrough) : LinkWalk() {  // marks go if it throws
    for (ParameterLinks* at = &start; at != nullptr && !at->ignoresLink_;) {
      auto* next = ViewAs<View>(at->link_.GetValidObject());
      if (next == nullptr) return;
      passed_.push_back(at);
      at->ignoresLink_ = true;
      linked_.push_back(next);
      at = goesThrough(*next) ? dynamic_cast<ParameterLinks*>(next) : nullptr;
    }
  }
  ~LinkWalk() {
    for (ParameterLinks* parameter : passed_) parameter->ignoresLink_ = false;
  }
  LinkWalk(const LinkWalk&) = delete;
  LinkWalk& operator=(const LinkWalk&) = delete;

  /// The last parameter (borrowed); null when the first one has no link that is followed.
  View* GetEnd() const { return linked_.empty() ? nullptr : linked_.back().Get(); }

 private:
  LinkWalk() = default;

  std::vector<ParameterLinks*> passed_;
  std::vector<ZRefPtr<View>> linked_;  // all but the first; what they do may let go of them
};

/// Lets a parameter have the definition of another one as long as it lives. What the parameter had
/// before comes back exactly, also no definition; to a parameter that is not built on
/// IZParameterImpl, the definition.
class ZDM_API LentDefinition {
 public:
  LentDefinition(IZParameter& to, const ParameterLinks& from);
  ~LentDefinition();
  LentDefinition(const LentDefinition&) = delete;
  LentDefinition& operator=(const LentDefinition&) = delete;

 private:
  IZParameter& to_;
  ParameterLinks* links_;
  ZRefPtr<IZSingleReltn> formerReltn_;
  IZDefinition* formerDefinition_ = nullptr;
};

}  // namespace zdm
