#include "document/CZDMMaterial.h"

ZDM_OBJECT_BODY(CZDMMaterial)

void CZDMMaterial::CopyFrom(IZDMObject* source, LONG mode) {
  NamedObject::CopyFrom(source, mode);
  auto* material = dynamic_cast<CZDMMaterial*>(source);
  if (material == nullptr) return;
  values_ = material->values_;
  isByCategory_ = material->isByCategory_;
}

// Own data, little-endian.
//   size      field
//   variable  name (IZStream::WriteBSTR)
//      1      1 for a material by category, else 0
//      4      colour, 0x00RRGGBB
//      8      transparency, 0 to 1
//      8      shininess, 0 to 1
//   variable  file name of the texture (IZStream::WriteBSTR)
void CZDMMaterial::SaveOwnData(IZStream* stream, IZDatabase* database) {
  NamedObject::SaveOwnData(stream, database);
  stream->WriteFlag(isByCategory_);
  stream->Write(&values_.color, sizeof(values_.color));
  stream->Write(&values_.transparency, sizeof(values_.transparency));
  stream->Write(&values_.shininess, sizeof(values_.shininess));
  stream->WriteBSTR(values_.texture.Get());
}

void CZDMMaterial::LoadOwnData(IZStream* stream, IZDatabase* database) {
  NamedObject::LoadOwnData(stream, database);
  const bool byCategory = stream->ReadFlag();
  zdm::MaterialValues values;
  stream->Read(&values.color, sizeof(values.color));
  stream->Read(&values.transparency, sizeof(values.transparency));
  stream->Read(&values.shininess, sizeof(values.shininess));
  stream->ReadBSTR(values.texture.Out());
  values_ = std::move(values);
  isByCategory_ = byCategory;
}
