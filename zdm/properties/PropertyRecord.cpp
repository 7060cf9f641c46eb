#include "zdm/properties/PropertyRecord.h"

#include "platform/core/IZStream.h"
#include "platform/geometry/CMT.h"
#include "platform/ole/VariantStream.h"

#include <cmath>

namespace zdm {
namespace {

template <class N>
void Write(IZStream* stream, const N& number) {
  stream->Write(&number, sizeof(number));
}

template <class N>
void Read(IZStream* stream, N& number) {
  stream->Read(&number, sizeof(number));
}

void WriteName(IZStream* stream, const Bstr& name) {
  static const Bstr empty(OLESTR(""));
  stream->WriteBSTR(name.IsNull() ? empty.Get() : name.Get());
}

void Check(HRESULT result) {
  if (FAILED(result)) throw CAtlException(result);
}

/// The IStream below, on which values are read and written.
IStream* Below(IZStream* stream) {
  IStream* below = stream->GetIStream();
  if (below == nullptr) throw CAtlException(E_FAIL);
  return below;
}

}  // namespace

bool PropertyRecord::IsInRange(double number) const {
  constexpr double kTolerance = CMT::GetDist();
  if (std::abs(minimum - maximum) < kTolerance) return true;
  if (Has(kIncludesMinimum) && std::abs(number - minimum) < kTolerance) return true;
  if (Has(kIncludesMaximum) && std::abs(number - maximum) < kTolerance) return true;
  return number - minimum > kTolerance && maximum - number > kTolerance;
}

bool PropertyRecord::IsInIntRange(LONG number) const {
  if (intMinimum == intMaximum) return true;
  if (Has(kIncludesMinimum) && number == intMinimum) return true;
  if (Has(kIncludesMaximum) && number == intMaximum) return true;
  return intMinimum < number && number < intMaximum;
}

// Property record, little-endian.
//   size  field
//      ?  name, as IZStream::WriteBSTR writes it; never null
//      ?  display name, likewise
//     16  GUID
//      ?  value: see WriteVariant in VariantStream.cpp
//   4+4+4  extra 1, extra 2, extra 3
//      2  extra 4
//    8+8  range: minimum, maximum
//    4+4  range of whole numbers: minimum, maximum
//      4  type code
//      2  flags
void PropertyRecord::Save(IZStream* stream) const {
  WriteName(stream, name);
  WriteName(stream, displayName);
  Write(stream, guid);
  Check(WriteVariant(Below(stream), value.Get()));
  Write(stream, extra1);
  Write(stream, extra2);
  Write(stream, extra3);
  Write(stream, extra4);
  Write(stream, minimum);
  Write(stream, maximum);
  Write(stream, intMinimum);
  Write(stream, intMaximum);
  Write(stream, type);
  Write(stream, flags);
}

void PropertyRecord::Load(IZStream* stream) {
  PropertyRecord read;
  stream->ReadBSTR(read.name.Out());
  stream->ReadBSTR(read.displayName.Out());
  Read(stream, read.guid);
  Check(ReadVariant(Below(stream), read.value.Out()));
  Read(stream, read.extra1);
  Read(stream, read.extra2);
  Read(stream, read.extra3);
  Read(stream, read.extra4);
  Read(stream, read.minimum);
  Read(stream, read.maximum);
  Read(stream, read.intMinimum);
  Read(stream, read.intMaximum);
  Read(stream, read.type);
  Read(stream, read.flags);
  *this = std::move(read);
}

bool SameValue(const VARIANT& left, const VARIANT& right) {
  constexpr double kTolerance = 1e-5;
  if (left.vt == VT_R8 && right.vt == VT_R8 && std::abs(left.dblVal - right.dblVal) < kTolerance) {
    return true;
  }
  if (left.vt != right.vt) return false;
  switch (left.vt) {
    case VT_NULL:
      return true;
    // Numbers that VarCmp does not compare.
    case VT_I1:
      return left.cVal == right.cVal;
    case VT_UI2:
      return left.uiVal == right.uiVal;
    case VT_UI4:
      return left.ulVal == right.ulVal;
    case VT_UI8:
      return left.ullVal == right.ullVal;
    default:  // not every system's headers have the sources const
      return VarCmp(const_cast<VARIANT*>(&left), const_cast<VARIANT*>(&right), LOCALE_USER_DEFAULT,
                    0) == static_cast<HRESULT>(VARCMP_EQ);
  }
}

}  // namespace zdm
