#include "zdm/host/ZGiHatchData.h"

#include "platform/core/IZStream.h"
#include "platform/system/Text.h"

#include <cmath>
#include <utility>

namespace {

constexpr double kTolerance = 1e-5;

bool Differs(double left, double right) {
  return std::isnan(left) != std::isnan(right) || std::fabs(left - right) > kTolerance;
}

}  // namespace

bool ZGiHatchData::JudgeSame(const ZGiHatchData& other) const {
  for (int i = 0; i < 3; ++i) {
    if (Differs(Values[i], other.Values[i])) return false;
  }
  return zdm::EqualIgnoringCase(Pattern.View(), other.Pattern.View());
}

// Hatch record, little-endian.
//   size      field
//   variable  pattern (IZStream::WriteBSTR)
//         24  the three numbers, 8 bytes each
void ZGiHatchData::Save(IZStream* stream) const {
  stream->WriteBSTR(StoredAsNull && Pattern.IsEmpty() ? nullptr : Pattern.Get());
  stream->Write(Values, sizeof(Values));
}

void ZGiHatchData::Load(IZStream* stream) {
  zdm::Bstr pattern;
  stream->ReadBSTR(pattern.Out());
  StoredAsNull = pattern.IsNull();
  Pattern = StoredAsNull ? zdm::Bstr(OLESTR("")) : std::move(pattern);
  stream->Read(Values, sizeof(Values));
}
