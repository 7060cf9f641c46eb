// A data-model object with a name and no geometry: stands for anything that is only referred to,
// classified or given parameters.
// Stream form: above SaveOwnData in CZDMPlainObject.cpp.
#pragma once

#include "document/ClassTable.h"
#include "platform/ole/Bstr.h"
#include "zdm/model/IZDMObjectImpl.h"

class CZDMPlainObject : public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(CZDMPlainObject)
 public:
  using IZDMObjectImpl::CopyFrom;
  using IZDMObjectImpl::JudgeSame;

  /// A copy; an object that was never named leaves `*name` alone.
  void GetName(BSTR* name) override;
  /// Takes a copy; null takes the name away.
  void SetName(const OLECHAR* name) override { name_ = zdm::Bstr(name); }
  /// The name too, of any kind of object.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  /// Inside one document the object itself; between two documents an object of the same class and
  /// the same ID.
  bool JudgeSame(IZDMObject* other) override;

  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;

 private:
  zdm::Bstr name_;
};
