#include "drawing/DrawingPart.h"

#include "drawing/GroupReader.h"
#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"
#include "zdm/model/IZDMObject.h"

#include <utility>

namespace zdm {

void DrawingPart::SetGroups(GroupList groups) {
  groups_ = std::move(groups);
  groups_.Settle();
  tail_ = groups_.Count();
}

void DrawingPart::AppendTail(const GroupList& groups) {
  for (const Group group : groups) groups_.Append(group);
}

std::string_view DrawingPart::Type() const {
  return groups_.IsEmpty() ? std::string_view() : Trimmed((*groups_.begin()).text);
}

/// Handles in braces and behind the end of an entity are others' or none of its own.
std::string_view DrawingPart::Handle() const {
  if (groups_.IsEmpty() || (*groups_.begin()).code != 0) return {};
  const LONG code = HandleCodeOf(Type());
  ULONG index = 0;
  for (const Group group : groups_) {
    if (index++ == tail_) break;
    if (group.code == code) return Trimmed(group.text);
    if (group.code == 102 || group.code >= 1000) break;
  }
  return {};
}

// What stands behind the own data of the base class, little-endian.
//   size      field
//   variable  the groups (GroupList)
//      4      number of those in front of the objects held
//      4      place in the section, signed
void DrawingPart::SavePart(IZStream* stream) const {
  groups_.Save(stream);
  stream->Write(&tail_, sizeof(tail_));
  stream->Write(&place_, sizeof(place_));
}

void DrawingPart::LoadPart(IZStream* stream) {
  GroupList groups;
  ULONG tail = 0;
  LONG place = 0;
  groups.Load(stream);
  stream->Read(&tail, sizeof(tail));
  stream->Read(&place, sizeof(place));
  if (tail > groups.Count()) throw CAtlException(E_FAIL);
  groups_ = std::move(groups);
  tail_ = tail;
  place_ = place;
}

DrawingPart* PartOf(IZDMObject* object) { return dynamic_cast<DrawingPart*>(object); }

LONG HandleCodeOf(std::string_view type) { return type == "DIMSTYLE" ? 105 : 5; }

}  // namespace zdm
