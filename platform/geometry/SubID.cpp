#include "platform/geometry/SubID.h"

#include "platform/core/IZStream.h"
#include "platform/ole/CAtlException.h"

#include <bit>
#include <new>

namespace {

constexpr BYTE kNullForm = 0;
constexpr BYTE kPathForm = 1;

static_assert(std::endian::native == std::endian::little, "numbers are written as they lie");

template <class T>
T ReadNumber(IZStream* stream) {
  T value = 0;
  bool isComplete = true;
  stream->Read(&value, sizeof(value), &isComplete);
  if (!isComplete) throw CAtlException(E_FAIL);
  return value;
}

SubID* New(const SubID& value) {
  auto* copy = new (std::nothrow) SubID(value);
  if (copy == nullptr) throw CAtlException(E_OUTOFMEMORY);
  return copy;
}

}  // namespace

SubID::SubID(Kind kind, std::initializer_list<ULONG> path) : kind_(kind) {
  for (const ULONG index : path) {
    if (FAILED(Append(index))) throw CAtlException(E_INVALIDARG);
  }
}

HRESULT SubID::Append(ULONG index) {
  if (depth_ == kMaxDepth) return E_INVALIDARG;
  path_[depth_++] = index;
  return S_OK;
}

SubID* SubID::Clone() const { return New(*this); }

// SubID record, 1 byte or 4 + 4n bytes, little-endian.
//   offset  size  field
//        0     1  form: 0 no SubID, nothing follows; 1 kind and path; others are damage
//        1     1  number n of indices, 0 to 16
//        2     2  kind, unsigned
//        4    4n  indices, unsigned, outermost first
void SaveSubID(IZStream* stream, const SubID* subId) {
  if (subId == nullptr) {
    stream->Write(&kNullForm, sizeof(kNullForm));
    return;
  }
  const auto depth = static_cast<BYTE>(subId->GetDepth());
  const USHORT kind = subId->GetKind();
  stream->Write(&kPathForm, sizeof(kPathForm));
  stream->Write(&depth, sizeof(depth));
  stream->Write(&kind, sizeof(kind));
  for (ULONG level = 0; level < depth; ++level) {
    const ULONG index = subId->GetIndex(level);
    stream->Write(&index, sizeof(index));
  }
}

void LoadSubID(IZStream* stream, SubID** out) {
  *out = nullptr;
  const auto form = ReadNumber<BYTE>(stream);
  if (form == kNullForm) return;
  if (form != kPathForm) throw CAtlException(E_FAIL);
  const auto depth = ReadNumber<BYTE>(stream);
  const auto kind = ReadNumber<USHORT>(stream);
  if (depth > SubID::kMaxDepth || stream->GetBytesLeft() < depth * sizeof(ULONG)) {
    throw CAtlException(E_FAIL);
  }
  SubID result(static_cast<SubID::Kind>(kind));
  for (BYTE level = 0; level < depth; ++level) result.Append(ReadNumber<ULONG>(stream));
  *out = New(result);
}
