// How an object is shown: drawing, box, visibility, display attribute, placement, name. The types
// it passes (GiContext, SubID, IZGiDevice, eZGiDraw) are the host's; the library hands them on.
// Lengths are drawing units. A box is six doubles: minima x, y, z, then maxima x, y, z.
// A reserved operation keeps its place and does nothing in the library. IZDisplayImpl answers
// everything neutrally.
#pragma once

#include "platform/core/IZObject.h"
#include "zdm/host/eZGiDraw.h"

class GeBox;
class GeMatrix;
class GiContext;
class SubID;
struct IZDispAttrib;
struct IZGiDevice;

struct ZDM_INTERFACE IZDisplay : IZObject {
  virtual void Draw(IZGiDevice* device, SubID* sub, GiContext* context) = 0;          // 3
  virtual void DrawVariant1(IZGiDevice* device, SubID* sub, GiContext* context) = 0;  // 4
  virtual void DrawVariant2(IZGiDevice* device, SubID* sub, GiContext* context) = 0;  // 5
  virtual void DrawVariant3(IZGiDevice* device, SubID* sub, GiContext* context) = 0;  // 6
  virtual void DrawVariant4(IZGiDevice* device, SubID* sub, GiContext* context) = 0;  // 7
  virtual void DrawVariant5(IZGiDevice* device, SubID* sub, GiContext* context) = 0;  // 8
  /// Shows the object as selected, by one of the device's two selection operations.
  virtual void Select(IZGiDevice* device) = 0;  // 9
  virtual void Reserved10() = 0;                // 10
  /// Writes the box of the part `sub`, null for the whole object.
  virtual void GetBox(double* box, SubID* sub, GiContext* context) = 0;  // 11
  /// The same as a GeBox.
  virtual void GetGeBox(GeBox* box, SubID* sub, GiContext* context) = 0;  // 12
  virtual void Reserved13() = 0;                                          // 13
  /// Extent of GetBox along an axis, never negative.
  virtual double GetSizeX(SubID* sub, GiContext* context) = 0;  // 14
  virtual double GetSizeY(SubID* sub, GiContext* context) = 0;  // 15
  virtual double GetSizeZ(SubID* sub, GiContext* context) = 0;  // 16
  /// Extends `box` by the whole object's.
  virtual void UnionBox(GeBox* box) = 0;                                            // 17
  virtual void Reserved18() = 0;                                                    // 18
  virtual bool IsVisible(eZGiDraw draw, GiContext* context) = 0;                    // 19
  virtual void SetVisibility(eZGiDraw draw, bool visible, GiContext* context) = 0;  // 20
  /// A value that copying carries over; its meaning is the host's. 0xFFFFFFFF for none.
  virtual ULONG GetDisplayValue() = 0;            // 21
  virtual void SetDisplayValue(ULONG value) = 0;  // 22
  virtual IZObject* Reserved23() = 0;             // 23
  virtual void Reserved24() = 0;                  // 24
  virtual void Reserved25() = 0;                  // 25
  /// The display attribute (borrowed), or null.
  virtual IZDispAttrib* GetDispAttrib() = 0;  // 26
  /// Gives the object a display attribute; who keeps it takes a reference.
  virtual void AttachDispAttrib(IZDispAttrib* attribute) = 0;  // 27
  virtual void Reserved28() = 0;                               // 28
  virtual void Reserved29() = 0;                               // 29
  /// Status bit `bit` of the object. Throws std::out_of_range outside 0 to 63 where there is one.
  virtual bool JudgeStatus(LONG bit) = 0;  // 30
  /// Sets relation status bits on the elements; answered by the recording collection alone.
  virtual void SetElementStatus(LONG bits) = 0;  // 31
  virtual void Reserved32() = 0;                 // 32
  /// The counterpart that clears them.
  virtual void ClearElementStatus(LONG bits) = 0;  // 33
  virtual void Reserved34() = 0;                   // 34
  virtual void Reserved35() = 0;                   // 35
  virtual void Reserved36() = 0;                   // 36
  /// Moves the object by a matrix of four rows of three columns.
  virtual void Transform(const double rows[][3]) = 0;  // 37
  /// By four rows of four columns; see GeMatrix for what is refused.
  virtual void Transform(const double rows[][4]) = 0;  // 38
  virtual void Transform(const GeMatrix& matrix) = 0;  // 39
  /// The object's own placement. One without a placement leaves `matrix` as it is.
  virtual void GetTransform(GeMatrix& matrix) = 0;  // 40
  virtual bool Reserved41() = 0;                    // 41
  virtual void Reserved42() = 0;                    // 42
  /// Stores the name in `*name`, which the caller has set to null and frees; an object without a
  /// name leaves it alone.
  virtual void GetName(BSTR* name) = 0;           // 43
  virtual void SetName(const OLECHAR* name) = 0;  // 44
};
