#include "document/Merge.h"

#include "document/CZDocument.h"
#include "zdm/identity/OID.h"

namespace zdm {

namespace {

MergeChooser ChooserOf(const MergeOptions& options) {
  if (options.choose) return options.choose;
  return [&options](IZDMObject* source, IZDMObject* target) {
    if (ViewAs<IZDMObjMgr>(source) != nullptr) return BYTE{ZMO_MERGE};
    const bool isOfDocument = static_cast<LONG>(target->GetID()) < 0;
    return static_cast<BYTE>(isOfDocument ? ZMO_SAME : options.counterparts);
  };
}

}  // namespace

MergeReport Merge(CZDocument& target, CZDocument& source, const MergeOptions& options) {
  MergeReport report;
  report.refusal = JudgeDocuments(source, target);
  if (report.refusal != Refusal::kNone) return report;
  Transfer transfer(target, Transfer::Outside::kCut);
  transfer.LeadTo(source.GetOID(), target.GetOID(), ReferenceFate::kCounterpart);
  LONG id = target.GetOIDManager()->GetLastSoftID();
  bool changes = false;
  for (const MergeStep& step : PlanMerge(&source, &target, ChooserOf(options))) {
    LONG place = step.target != nullptr ? static_cast<LONG>(step.target->GetID()) : 0;
    if (step.decision == MergeDecision::kAdd) {
      transfer.Copy(step.source, &target);
      place = ++id;
    } else if (step.decision == MergeDecision::kReplace) {
      transfer.Replace(step.source, step.target);
      report.replaced.push_back({place, CloneAs<IZDMObject>(step.target)});
    } else if (step.target != nullptr) {
      transfer.LeadTo(step.source->GetOID(), step.target->GetOID(), ReferenceFate::kCounterpart);
    }
    changes |= step.decision == MergeDecision::kAdd || step.decision == MergeDecision::kReplace;
    report.objects.push_back({step.source, step.decision, place});
  }
  if (changes && !options.dryRun) {
    transfer.CarryOut(&report.cut);
  } else {
    report.cut = transfer.FindLeadingOut();
  }
  std::erase_if(report.cut,
                [](const LeadingOut& reference) { return reference.fate != ReferenceFate::kCut; });
  return report;
}

}  // namespace zdm
