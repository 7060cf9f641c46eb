// Bits of an object's option mask (OID::OptionAllowed) that the library tests. The others belong to
// those who define them.
#pragma once

#include "platform/ole/ole.h"

namespace zdm {

/// The object may not be deleted while another live one refers to it.
constexpr LONGLONG kKeptWhileReferenced = 0x0010000000000000;  // bit 52
/// The object's references count: against deletion, in what self-containment cuts, and in what
/// deduction follows.
constexpr LONGLONG kReferencesCount = 0x0020000000000000;  // bit 53

}  // namespace zdm
