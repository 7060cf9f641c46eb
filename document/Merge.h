// Merging another document into one: per object the same, replaced, added, or, for managers, merged
// with its counterpart. The source stays as it is.
#pragma once

#include "document/MergePlan.h"
#include "document/Transfer.h"
#include "zdm/host/eZMergeOption.h"

namespace zdm {

struct MergeOptions {
  /// For objects that have a counterpart and are no managers; managers are merged, and objects with
  /// a hard ID, which belong to the document, stand for their counterparts as they are.
  eZMergeOption counterparts = ZMO_SAME;
  /// Asked instead for every pair, managers too; may be empty.
  MergeChooser choose;
  /// The same report, and nothing is changed. IDs of copies are those that they would get.
  bool dryRun = false;
};

struct MergedObject {
  IZDMObject* source;
  MergeDecision decision;
  LONG id;  // in the target document: of the counterpart or the copy; 0 for what is left out
};

struct FormerData {
  LONG id;
  ZRefPtr<IZDMObject> data;  // a clone of the object before it was replaced
};

struct MergeReport {
  Refusal refusal = Refusal::kNone;
  std::vector<MergedObject>
      objects;  // every valid object of the source: its decision and the ID map
  std::vector<FormerData> replaced;
  std::vector<LeadingOut> cut;  // references of added and replaced objects
};

MergeReport Merge(CZDocument& target, CZDocument& source, const MergeOptions& options = {});

}  // namespace zdm
