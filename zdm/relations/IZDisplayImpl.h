// The display operations of something that shows nothing: neutral answers, empty actions, and the
// derived ones (GetGeBox, sizes, UnionBox, the two Transform of rows) by way of GetBox and
// Transform(const GeMatrix&), so that a class overrides those alone.
// Base is an implementation whose interfaces derive from IZDisplay, such as IZObjectImpl<T>; where
// it has several IZDisplay parts, all are answered. Adds no data.
#pragma once

#include "zdm/relations/IZDisplay.h"

template <class Base>
class IZDisplayImpl : public Base {
 public:
  void Draw(IZGiDevice*, SubID*, GiContext*) override {}
  void DrawVariant1(IZGiDevice*, SubID*, GiContext*) override {}
  void DrawVariant2(IZGiDevice*, SubID*, GiContext*) override {}
  void DrawVariant3(IZGiDevice*, SubID*, GiContext*) override {}
  void DrawVariant4(IZGiDevice*, SubID*, GiContext*) override {}
  void DrawVariant5(IZGiDevice*, SubID*, GiContext*) override {}
  void Select(IZGiDevice*) override {}
  void Reserved10() override {}
  /// 1e20 six times: no extent at all, yet not an empty box.
  void GetBox(double* box, SubID* sub, GiContext* context) override;
  void GetGeBox(GeBox* box, SubID* sub, GiContext* context) override;
  void Reserved13() override {}
  double GetSizeX(SubID* sub, GiContext* context) override { return Size(0, sub, context); }
  double GetSizeY(SubID* sub, GiContext* context) override { return Size(1, sub, context); }
  double GetSizeZ(SubID* sub, GiContext* context) override { return Size(2, sub, context); }
  void UnionBox(GeBox* box) override;
  void Reserved18() override {}
  bool IsVisible(eZGiDraw, GiContext*) override { return true; }
  void SetVisibility(eZGiDraw, bool, GiContext*) override {}
  ULONG GetDisplayValue() override { return 0xFFFFFFFF; }
  void SetDisplayValue(ULONG) override {}
  IZObject* Reserved23() override { return nullptr; }
  void Reserved24() override {}
  void Reserved25() override {}
  IZDispAttrib* GetDispAttrib() override { return nullptr; }
  void AttachDispAttrib(IZDispAttrib*) override {}
  void Reserved28() override {}
  void Reserved29() override {}
  bool JudgeStatus(LONG) override { return false; }
  void SetElementStatus(LONG) override {}
  void Reserved32() override {}
  void ClearElementStatus(LONG) override {}
  void Reserved34() override {}
  void Reserved35() override {}
  void Reserved36() override {}
  void Transform(const double rows[][3]) override;
  void Transform(const double rows[][4]) override;
  void Transform(const GeMatrix&) override {}
  void GetTransform(GeMatrix&) override {}
  bool Reserved41() override { return true; }
  void Reserved42() override {}
  void GetName(BSTR*) override {}
  void SetName(const OLECHAR*) override {}

 private:
  double Size(int axis, SubID* sub, GiContext* context);
};

#include "zdm/relations/IZDisplayImpl.inl"
