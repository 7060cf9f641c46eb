#include "zdm/properties/CZPropertyPairs.h"

#include "zdm/properties/PropertyClones.h"

ZDM_OBJECT_BODY(CZPropertyPairs)

void CZPropertyPairs::CopyFrom(IZProperty* source) {
  if (!TakeFrom(source)) return;
  auto& from = static_cast<CZPropertyPairs&>(*source);
  List clones;
  zdm::AddClones(from, from.beingCopied_, clones);
  List::AddTailList(clones);
}

LONG CZPropertyPairs::MergePairs(IZObject* other, bool* result) {
  if (zdm::ViewAs<IZPropertyPairs>(other) == nullptr) return S_FALSE;
  SetReadOnly(true);
  *result = false;
  return S_OK;
}
