#include "drawing/GroupList.h"

#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"

#include <limits>
#include <utility>

namespace zdm {

void GroupList::Append(const Group& group) {
  constexpr std::size_t kMost = std::numeric_limits<ULONG>::max() / 2;
  if (group.text.size() > kMost || bytes_.size() > kMost) throw CAtlException(E_FAIL);
  const auto size = static_cast<ULONG>(group.text.size());
  bytes_.append(reinterpret_cast<const char*>(&group.code), sizeof(group.code));
  bytes_.append(reinterpret_cast<const char*>(&size), sizeof(size));
  bytes_.append(group.text);
  ++count_;
}

std::vector<Group> GroupList::All() const {
  std::vector<Group> all;
  all.reserve(count_);
  for (const Group group : *this) all.push_back(group);
  return all;
}

std::string_view GroupList::Find(LONG code) const {
  for (const Group group : *this) {
    if (group.code == code) return group.text;
  }
  return {};
}

ULONG GroupList::IndexOf(LONG code) const {
  ULONG index = 0;
  for (const Group group : *this) {
    if (group.code == code) break;
    ++index;
  }
  return index;
}

GroupList GroupList::With(ULONG index, std::string_view text) const {
  GroupList copy;
  for (const Group group : *this) {
    copy.Append({group.code, copy.Count() == index ? text : group.text});
  }
  return copy;
}

// Group list, little-endian.
//   size      field
//      4      size of what follows, in bytes
//   then for each group
//      4      code, signed
//      4      length of its text n
//      n      the text, bytes of the file
void GroupList::Save(IZStream* stream) const {
  const auto size = static_cast<ULONG>(bytes_.size());
  stream->Write(&size, sizeof(size));
  if (size != 0) stream->Write(bytes_.data(), size);
}

void GroupList::Load(IZStream* stream) {
  ULONG size = 0;
  stream->Read(&size, sizeof(size));
  if (size > stream->GetBytesLeft()) throw CAtlException(E_FAIL);
  GroupList read;
  read.bytes_.resize(size);
  if (size != 0) stream->Read(read.bytes_.data(), size);
  for (std::size_t at = 0; at != size; ++read.count_) {
    if (size - at < kHead) throw CAtlException(E_FAIL);
    ULONG length;
    std::memcpy(&length, read.bytes_.data() + at + sizeof(LONG), sizeof(length));
    if (length > size - at - kHead) throw CAtlException(E_FAIL);
    at += kHead + length;
  }
  *this = std::move(read);
}

}  // namespace zdm
