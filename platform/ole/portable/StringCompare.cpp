#include "platform/ole/portable/StringCompare.h"

#include "platform/ole/portable/Bstr.h"
#include "platform/ole/portable/StringCollator.h"

#include <new>
#include <string>

namespace {

using View = std::basic_string_view<OLECHAR>;

constexpr HRESULT FromSign(int sign) {
  return sign < 0 ? VARCMP_LT : sign > 0 ? VARCMP_GT : VARCMP_EQ;
}

}  // namespace

HRESULT VarBstrCmp(BSTR left, BSTR right, LCID locale, ULONG flags) {
  if ((flags & ~NORM_IGNORECASE) != 0) return E_INVALIDARG;
  const UINT leftLength = SysStringLen(left);
  const UINT rightLength = SysStringLen(right);
  if (leftLength == 0 || rightLength == 0) {
    return leftLength == rightLength ? VARCMP_EQ : leftLength == 0 ? VARCMP_LT : VARCMP_GT;
  }
  const View leftText(left, leftLength);
  const View rightText(right, rightLength);
  if (locale == 0) return FromSign(leftText.compare(rightText));
  try {
    const zdm::StringCollator& collator = zdm::StringCollator::ForUser();
    return FromSign((flags & NORM_IGNORECASE) != 0
                        ? collator.CompareIgnoringCase(leftText, rightText)
                        : collator.Compare(leftText, rightText));
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
}
