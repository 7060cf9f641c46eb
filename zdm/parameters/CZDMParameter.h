// A parameter of the document itself: a parameter and a data-model object. The two sides share one
// identity and one count; where both have an operation of a name (Accept, Save, Load, GetName,
// GetOwner, SetOwner), each keeps its own.
// Its definition, link and value are not offered by VisitReferences, but by the parameter's Accept.
#pragma once

#include "zdm/model/IZDMObjectImpl.h"
#include "zdm/module/ClassTable.h"
#include "zdm/parameters/IZParameterImpl.h"

class ZDM_API CZDMParameter : public IZParameterImpl<IZDMParameter>,
                              public IZDMObjectImpl<IZDMObject> {
  ZDM_OBJECT(CZDMParameter)
 public:
  using IZDMObjectImpl::AddRef;
  using IZDMObjectImpl::CopyFrom;
  using IZDMObjectImpl::JudgeSame;
  using IZDMObjectImpl::Release;
  using IZParameterImpl::CopyFrom;

  virtual bool IsDumpRef() { return false; }

  IZObject* Clone() override { return IZDMObjectImpl::Clone(); }

  /// From a parameter also what a parameter takes over.
  void CopyFrom(IZDMObject* source, LONG mode) override;
  /// True for any parameter that is equal.
  bool JudgeSame(IZDMObject* other) override;
  /// A visitor that spreads ZOS_AFFECTED is shown the single-target relations of the object's
  /// collection alone, once; true then.
  bool VisitReferences(IZDMObject* root, IZReltnVisitor* visitor) override;
  /// "CZDMParameter".
  void GetDisplayName(BSTR* out) override;
  void LoadOwnData(IZStream* stream, IZDatabase* database) override;
  void SaveOwnData(IZStream* stream, IZDatabase* database) override;
};
