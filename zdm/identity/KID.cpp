#include "zdm/identity/KID.h"

void KID::SetStatus(const LONG&, ULONGLONG) {}
void KID::ClearStatus(const LONG&, ULONGLONG) {}
