#include "zdm/properties/CZPropertyText.h"

ZDM_OBJECT_BODY(CZPropertyText)

void* CZPropertyText::GetSharedBuffer() {
  static OLECHAR buffer[kBufferSize / sizeof(OLECHAR)];
  return buffer;
}
