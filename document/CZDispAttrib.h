// A display attribute: colour, line type, line weight and visibility. Categories and category
// relations keep two each; attached to an object, it stands among the object's relations.
// Stream form: above Save in CZDispAttrib.cpp.
#pragma once

#include "document/ClassTable.h"
#include "document/DispValues.h"
#include "zdm/host/IZDispAttrib.h"
#include "zdm/relations/IZRelationImpl.h"

class CZDispAttrib : public IZRelationImpl<IZDispAttrib>, public zdm::DispValueSource {
  ZDM_OBJECT(CZDispAttrib)
 public:
  zdm::DispValues GetValues() override { return values_; }
  void SetValues(const zdm::DispValues& values) { values_ = values; }

  // IZDisplay.
  bool IsVisible(eZGiDraw, GiContext*) override { return values_.isVisible; }
  void SetVisibility(eZGiDraw, bool visible, GiContext*) override { values_.isVisible = visible; }
  /// Itself.
  IZDispAttrib* GetDispAttrib() override { return this; }

  // IZRelation.
  /// Status and tag, and the values that `other` shows at this moment; of a relation without such
  /// values only status and tag. Null changes nothing.
  void CopyFrom(IZRelation* other) override;
  void Load(IZStream* stream, IZDatabase* database) override;
  void Save(IZStream* stream, IZDatabase* database) override;
  /// True for a display attribute of equal values; neither status nor tag matter.
  bool JudgeSame(IZRelation* other) override;

 private:
  zdm::DispValues values_;
};
