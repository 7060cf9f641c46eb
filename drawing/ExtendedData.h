// The extended data of entities: what a file has behind the name of an application becomes items of
// extended data under the key of that application, in order, each named by its group code.
//   codes 1000 to 1009  strings       1010 to 1059  doubles
//   codes 1060 to 1070  shorts        1071          longs
// A value that is no number where one belongs is a string.
#pragma once

#include "drawing/GroupRelations.h"

#include <map>

namespace zdm {

/// The key of an application: the same for the same name in any case, in every document.
GUID KeyOfApplication(const WideString& name);

/// Orders keys for a map.
struct KeyLess {
  bool operator()(const GUID& left, const GUID& right) const;
};
/// Names by key, of applications whose data an object may have beside those of its groups.
using Applications = std::map<GUID, WideString, KeyLess>;

void MakeExtendedData(IZDMObject& object, const GroupList& groups, const TextCodec& codec);

/// Appends the groups from 1001 on as they are to be written: as they were where the items of an
/// application still say the same, else made of the items.
/// @param read      the groups as they were read.
/// @param written   the same with edits, in step.
void AppendExtendedData(IZDMObject& object, const std::vector<Group>& read,
                        const std::vector<Group>& written, const TextCodec& codec,
                        const Applications& applications, GroupList* out);

}  // namespace zdm
