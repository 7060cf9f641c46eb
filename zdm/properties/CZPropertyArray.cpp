#include "zdm/properties/CZPropertyArray.h"

#include "zdm/properties/IZPropertyPoint.h"
#include "zdm/properties/PropertyClones.h"
#include "zdm/properties/PropertyType.h"

ZDM_OBJECT_BODY(CZPropertyArray)

CZPropertyArray::CZPropertyArray() { record_.type = zdm::kPropertyArray; }

void CZPropertyArray::CopyFrom(IZProperty* source) {
  if (!TakeFrom(source)) return;
  auto& from = static_cast<CZPropertyArray&>(*source);
  List clones;
  zdm::AddClones(from, from.beingCopied_, clones);
  List::RemoveAll();
  List::AddTailList(clones);
}

bool CZPropertyArray::MergeWith(IZProperty*) {
  SetReadOnly(true);
  return false;
}

LONG CZPropertyArray::SetPointCount(USHORT count) {
  SetShort(static_cast<SHORT>(count));
  return S_OK;
}

ULONG CZPropertyArray::GetPointCount() {
  return Holds(VT_I2) ? static_cast<USHORT>(record_.value.Get().iVal) : 0xFFFFFFFF;
}

void CZPropertyArray::AddPoints(LONG count, const OLECHAR* name, const OLECHAR* displayName,
                                const GUID& guid) {
  List::AllOrNothing([&] {
    for (LONG i = 0; i < count; ++i) {
      const auto point = zdm::NewOf<IZProperty, CZPropertyPoint>();
      point->SetName(name);
      point->SetDisplayName(displayName);
      point->SetGUID(guid);
      point->SetExtra2(static_cast<ULONG>(i));
      List::AddTail(point);
    }
  });
}

ULONG CZPropertyArray::SetPoints(const double* coordinates, ULONG count) {
  const auto own = static_cast<ULONG>(GetCount());
  if (own != count) return own;
  const double* block = coordinates;
  for (LONGLONG pos = GetHeadPosition(); pos != 0; block += 4) {
    auto* point = zdm::ViewAs<IZPropertyPoint>(GetNext(pos));
    if (point != nullptr) point->SetPoint(XYZ::FromArray(block + 1));
  }
  return static_cast<ULONG>(SetPointCount(static_cast<USHORT>(count)));
}
