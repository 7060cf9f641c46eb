// With what something is drawn.
#pragma once

#include "platform/ole/Bstr.h"
#include "platform/ole/ole.h"

struct IZStream;

namespace zdm {

struct DispValues {
  ULONG color = 0x00FFFFFF;    // 0x00RRGGBB
  Bstr lineType;               // its name; null is a continuous line
  double lineTypeScale = 1.0;  // length of the pattern against the one it was defined with
  LONG lineWeight = 25;        // hundredths of a millimetre
  bool isVisible = true;

  bool operator==(const DispValues&) const = default;

  void Save(IZStream* stream) const;
  /// Values that cannot be read whole change nothing and throw CAtlException(E_FAIL).
  void Load(IZStream* stream);
};

/// What has such values. It is no interface of the framework: dynamic_cast reaches it.
struct DispValueSource {
  virtual DispValues GetValues() = 0;

 protected:
  DispValueSource() = default;
  ~DispValueSource() = default;
};

}  // namespace zdm
