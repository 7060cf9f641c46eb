// The display attribute that shows an object with the values of a category. It refers to the
// category like any relation; while it is not enabled, or the category is gone, it shows default
// values. Stream form: above Save in CZCategoryDispAttrib.cpp.
#pragma once

#include "document/ClassTable.h"
#include "document/DispValues.h"
#include "zdm/host/IZCategoryDispAttrib.h"
#include "zdm/host/IZDispAttrib.h"
#include "zdm/relations/IZRelationImpl.h"

class OID;

class CZCategoryDispAttrib : public IZRelationImpl<IZDispAttrib>,
                             public IZObjectImpl<IZCategoryDispAttrib>,
                             public zdm::DispValueSource {
  ZDM_OBJECT(CZCategoryDispAttrib)
 public:
  using IZRelationImpl::AddRef;
  using IZRelationImpl::Clone;
  using IZRelationImpl::Release;

  IZObject* Clone() override { return IZRelationImpl::Clone(); }

  /// Those of the category's projection attribute. Visible while its category relation says so, or
  /// without one the category itself.
  zdm::DispValues GetValues() override;
  /// Borrowed; null without one, or when it is gone.
  IZCategory* GetCategory() const;
  bool IsEnabled() const { return isEnabled_; }

  // IZCategoryDispAttrib.
  void SetCategory(IZCategory* category) override;
  void SetEnabled(bool enabled) override { isEnabled_ = enabled; }
  void AttachTo(IZDisplay* display) override;

  // IZDisplay.
  bool IsVisible(eZGiDraw, GiContext*) override { return GetValues().isVisible; }
  /// Itself.
  IZDispAttrib* GetDispAttrib() override { return this; }

  // IZRelation.
  /// Status and tag; of another attribute of this class also category and enabling.
  void CopyFrom(IZRelation* other) override;
  void Load(IZStream* stream, IZDatabase* database) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  /// Offers the category, unless there is none, through MapOID.
  bool Accept(IZDMObject* root, IZDMObject* owner, IZReltnVisitor* visitor) override;
  /// True for an attribute of this class with the same category and enabling.
  bool JudgeSame(IZRelation* other) override;

 private:
  OID* category_ = nullptr;
  bool isEnabled_ = false;
};
