#include "zdm/host/ZGiHatchData.h"

#include <cmath>
#include <utility>

#include "platform/core/IZStream.h"
#include "platform/system/Text.h"

namespace {

constexpr double kTolerance = 1e-5;

}  // namespace

bool ZGiHatchData::JudgeSame(const ZGiHatchData& other) const {
  for (int i = 0; i < 3; ++i) {
    if (std::fabs(Values[i] - other.Values[i]) > kTolerance) return false;
  }
  return zdm::EqualIgnoringCase(Pattern.Get(), other.Pattern.Get());
}

// Hatch record, little-endian.
//   size      field
//   variable  pattern (IZStream::WriteBSTR)
//         24  the three numbers, 8 bytes each
void ZGiHatchData::Save(IZStream* stream) const {
  stream->WriteBSTR(Pattern.Get());
  stream->Write(Values, sizeof(Values));
}

void ZGiHatchData::Load(IZStream* stream) {
  zdm::Bstr pattern;
  stream->ReadBSTR(pattern.Out());
  Pattern = pattern.IsNull() ? zdm::Bstr(OLESTR("")) : std::move(pattern);
  stream->Read(Values, sizeof(Values));
}
