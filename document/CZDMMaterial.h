// A material: a name, and how surfaces of it look. Objects of a material by category show that of
// their category in its place. Stream form: above SaveOwnData in CZDMMaterial.cpp.
#pragma once

#include "document/ClassTable.h"
#include "document/NamedObject.h"
#include "zdm/host/IZGiMaterial.h"

namespace zdm {

struct MaterialValues {
  ULONG color = 0x00C0C0C0;   // 0x00RRGGBB
  double transparency = 0.0;  // 0 opaque to 1 invisible
  double shininess = 0.0;     // 0 dull to 1 a mirror
  Bstr texture;               // file name of an image; null for none

  bool operator==(const MaterialValues&) const = default;
};

}  // namespace zdm

class CZDMMaterial : public NamedObject<IZGiMaterial> {
  ZDM_OBJECT(CZDMMaterial)
 public:
  using NamedObject::CopyFrom;

  bool IsByCategory() override { return isByCategory_; }
  void SetByCategory(bool byCategory) { isByCategory_ = byCategory; }
  const zdm::MaterialValues& GetValues() const { return values_; }
  void SetValues(const zdm::MaterialValues& values) { values_ = values; }

  /// Of another material also what it looks like.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;

 private:
  zdm::MaterialValues values_;
  bool isByCategory_ = false;
};
