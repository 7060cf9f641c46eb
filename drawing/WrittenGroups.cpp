#include "drawing/WrittenGroups.h"

#include "drawing/GroupCodes.h"
#include "drawing/Parameters.h"
#include "zdm/model/IZDMObject.h"

namespace zdm {

WrittenRecord WrittenGroups(IZDMObject& object, const DrawingPart& part, const TextCodec& codec,
                            const Applications& applications) {
  GroupEdits edits;
  CollectRelationEdits(object, part, codec, &edits);
  CollectParameterEdits(object, part, codec, &edits);
  const std::vector<Group> all = part.Groups().All();
  const auto split = all.begin() + static_cast<std::ptrdiff_t>(part.Tail());
  const std::vector<Group> read(all.begin(), split);
  std::vector<Group> written = read;
  for (const auto& [index, text] : edits) {
    if (index < written.size()) written[index].text = text;
  }
  WrittenRecord record;
  for (const Group& group : written) {
    if (group.code == kApplicationCode) break;
    record.head.Append(group);
  }
  if (!read.empty()) {
    AppendExtendedData(object, read, written, codec, applications, &record.head);
  }
  for (auto at = split; at != all.end(); ++at) record.tail.Append(*at);
  return record;
}

}  // namespace zdm
