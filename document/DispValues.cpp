#include "document/DispValues.h"

#include "platform/core/IZStream.h"

#include <utility>

namespace zdm {

namespace {

#pragma pack(push, 1)
/// What stands behind the name of the line type.
struct Tail {
  double lineTypeScale;
  LONG lineWeight;
  bool isVisible;
};
#pragma pack(pop)
static_assert(sizeof(Tail) == 13);

}  // namespace

// Display values, little-endian.
//   size      field
//      4      colour, 0x00RRGGBB
//   variable  name of the line type (IZStream::WriteBSTR)
//      8      scale of the line type
//      4      line weight, hundredths of a millimetre
//      1      1 when visible, else 0
void DispValues::Save(IZStream* stream) const {
  stream->Write(&color, sizeof(color));
  stream->WriteBSTR(lineType.Get());
  const Tail tail = {lineTypeScale, lineWeight, isVisible};
  stream->Write(&tail, sizeof(tail));
}

void DispValues::Load(IZStream* stream) {
  DispValues read;
  stream->Read(&read.color, sizeof(read.color));
  stream->ReadBSTR(read.lineType.Out());
  stream->Read(&read.lineTypeScale, sizeof(read.lineTypeScale));
  stream->Read(&read.lineWeight, sizeof(read.lineWeight));
  read.isVisible = stream->ReadFlag();
  *this = std::move(read);
}

}  // namespace zdm
