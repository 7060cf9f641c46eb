#include "document/Meaning.h"

#include "document/CZDocument.h"
#include "document/Transfer.h"
#include "platform/ole/Bstr.h"
#include "platform/system/Text.h"
#include "zdm/categories/IZCategory.h"
#include "zdm/host/IZGiMaterial.h"
#include "zdm/identity/OID.h"
#include "zdm/model/IZDefinition.h"
#include "zdm/properties/GUID_UNSET.h"

namespace zdm {

std::string MeaningOf(IZDMObject& object) {
  if (ViewAs<IZCategory>(&object) != nullptr) {
    return "category " + std::to_string(object.GetNumber());
  }
  if (auto* definition = ViewAs<IZDefinition>(&object)) {
    GUID key = GUID_NULL;
    OLECHAR text[39];
    StringFromGUID2(*definition->GetKey(&key), text, 39);
    return key == GUID_UNSET ? std::string() : "definition " + ToUtf8(text);
  }
  if (ViewAs<IZGiMaterial>(&object) != nullptr) {
    Bstr name;
    object.GetName(name.Out());
    return name.IsNull() ? std::string() : "material " + ToUtf8(name.View());
  }
  return {};
}

Meanings::Meanings(CZDocument& document) {
  for (OID* oid : document.GetOIDManager()->GetOIDs()) {
    if (!IsAlive(oid)) continue;
    const std::string meaning = MeaningOf(*oid->Object);
    if (!meaning.empty()) records_.try_emplace(meaning, oid);
  }
}

OID* Meanings::Find(IZDMObject* object) const {
  if (object == nullptr) return nullptr;
  const auto [answer, isNew] = answers_.Insert(object);
  if (isNew) {
    const std::string meaning = MeaningOf(*object);
    const auto found = meaning.empty() ? records_.end() : records_.find(meaning);
    *answer = found != records_.end() ? found->second : nullptr;
  }
  return *answer;
}

}  // namespace zdm
