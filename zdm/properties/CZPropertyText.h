// The text property.
#pragma once

#include "zdm/module/ClassTable.h"
#include "zdm/properties/IZPropertyImpl.h"
#include "zdm/properties/IZPropertyText.h"

class ZDM_API CZPropertyText : public IZPropertyImpl<IZPropertyText> {
  ZDM_OBJECT(CZPropertyText)
 public:
  static constexpr std::size_t kBufferSize = 1024;  // bytes

  void* GetSharedBuffer() override;
};
