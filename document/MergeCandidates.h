// The valid objects of a manager, by what makes each the counterpart of an object of another
// document, so that nothing is searched for one by one: managers by class and name, categories by
// number, definitions by key, parameters by what they are compared by, all others by class and ID.
// Classes that judge otherwise are asked in the order of the list. A picture of the moment.
#pragma once

#include "zdm/model/IZDMObjMgr.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

struct IZParameter;

namespace zdm {

class MergeCandidates {
 public:
  explicit MergeCandidates(IZDMObjMgr& manager);

  /// The counterpart of `source` (borrowed), or null: of several the one of the same ID, or else
  /// the first. See MergePlan.h.
  IZDMObject* Find(IZDMObject* source) const;

 private:
  using Key = std::string;
  struct Place {
    std::size_t index;
    IZDMObject* object;
  };
  using Places = std::vector<Place>;

  void Add(const Place& place);
  IZDMObject* FindManager(IZDMObject* source, IZDMObject* sameID) const;
  IZDMObject* FindOther(IZDMObject* source) const;
  void LookAmong(const Places& places, IZDMObject* source, Place& first) const;
  void LookForParameter(IZDMObject* source, IZParameter& parameter, Place& first) const;

  std::map<ULONG, IZDMObject*> byID_;
  std::map<Key, IZDMObject*> managers_;  // the first of each class and name
  std::size_t others_ = 0;               // so many of the next four, in the order of the list
  std::map<Key, Place> judging_;         // the first of each key
  std::map<std::pair<Key, double>, Place> parameters_;  // likewise
  Places allParameters_;                                // also those that have no such key
  Places asked_;                                        // one by one
};

}  // namespace zdm
