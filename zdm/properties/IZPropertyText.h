// A property whose text the application edits in a block of its own.
#pragma once

#include "zdm/properties/IZProperty.h"

struct ZDM_INTERFACE IZPropertyText : IZProperty {
  /// 1024 bytes that all text properties of the process share, zero at first. The library neither
  /// reads nor writes them.
  virtual void* GetSharedBuffer() = 0;  // 62
};
