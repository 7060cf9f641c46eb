// What the display objects of one curve have in common: box, transformation, copies, stored form.
// Kind says what curve it is:
//   Interface, Shape, kNumbers       the IGe… interface, its value, how many numbers describe it
//   ShapeOf(Interface&) -> Shape
//   ToNumbers(const Shape&) -> std::array<double, kNumbers>, and FromNumbers back
//   Map(Shape&, const GeMatrix&)     false, and nothing changes, when the image is of another kind
// The numbers stay as they were read until the shape changes, so an object is stored as it came.
// Stream form: above SaveOwnData.
#pragma once

#include "document/AttachedDispAttrib.h"
#include "document/Counterpart.h"
#include "platform/core/IZStream.h"
#include "platform/geometry/IGeCurve.h"
#include "zdm/model/IZDMObjectImpl.h"

#include <array>

template <class Kind>
class CurveObject : public IZDMObjectImpl<IZDMObject>,
                    public IZObjectImpl<typename Kind::Interface> {
 public:
  using Shape = typename Kind::Shape;
  using IZDMObjectImpl::AddRef;
  using IZDMObjectImpl::CopyFrom;
  using IZDMObjectImpl::JudgeSame;
  using IZDMObjectImpl::Release;
  using IZDMObjectImpl::Transform;

  CurveObject() { SetShape(Shape()); }

  IZObject* Clone() override { return IZDMObjectImpl::Clone(); }

  // IGeCurve. The tolerance does not matter: the curve is exact.
  GeCurve GetCurve(double) override { return GeCurve(shape_); }
  bool TransformBy(const GeMatrix& matrix) override {
    Shape image = shape_;
    if (!Kind::Map(image, matrix)) return false;
    SetShape(image);
    return true;
  }

  // IZDisplay.
  void GetBox(double* box, SubID*, GiContext*) override { shape_.GetBounds().GetBox(box); }
  /// As TransformBy: nothing changes when the image is no curve of this kind.
  void Transform(const GeMatrix& matrix) override { this->TransformBy(matrix); }
  ULONG GetDisplayValue() override { return displayValue_; }
  void SetDisplayValue(ULONG value) override { displayValue_ = value; }
  /// The one among the relations.
  IZDispAttrib* GetDispAttrib() override { return zdm::GetAttachedDispAttrib(*this); }
  void AttachDispAttrib(IZDispAttrib* attribute) override {
    zdm::AttachDispAttrib(*this, attribute);
  }

  // IZDMObject.
  /// The curve too, of any object that shows one of this kind.
  void CopyFrom(IZDMObject* source, LONG mode) override {
    IZDMObjectImpl::CopyFrom(source, mode);
    auto* curve = zdm::ViewAs<typename Kind::Interface>(source);
    if (curve != nullptr && source != this) SetShape(Kind::ShapeOf(*curve));
  }
  /// See zdm::AreCounterparts.
  bool JudgeSame(IZDMObject* other) override {
    return IZDMObjectImpl::JudgeSame(other) ||
           (other != nullptr && zdm::AreCounterparts(*this, *other));
  }

  // Own data, little-endian.
  //   size          field
  //   8 * kNumbers  the numbers of the curve, see ToNumbers of each kind
  //   4             display value
  void SaveOwnData(IZStream* stream, IZDatabase*) override {
    stream->Write(numbers_.data(), sizeof(numbers_));
    stream->Write(&displayValue_, sizeof(displayValue_));
  }
  void LoadOwnData(IZStream* stream, IZDatabase*) override {
    Numbers numbers;
    ULONG displayValue;
    stream->Read(numbers.data(), sizeof(numbers));
    stream->Read(&displayValue, sizeof(displayValue));
    shape_ = Kind::FromNumbers(numbers);
    numbers_ = numbers;
    displayValue_ = displayValue;
  }

 protected:
  const Shape& GetShape() const { return shape_; }
  void SetShape(const Shape& shape) {
    shape_ = shape;
    numbers_ = Kind::ToNumbers(shape);
  }

 private:
  using Numbers = std::array<double, Kind::kNumbers>;

  Shape shape_;
  Numbers numbers_;
  ULONG displayValue_ = 0xFFFFFFFF;
};
