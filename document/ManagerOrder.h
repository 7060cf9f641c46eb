// The order of objects in their managers, where it is not the one in which opening attaches them:
// by ID, hard ones first, from -2 downwards.
#pragma once

class CZDocument;
class COIDManager;
struct IZStream;

namespace zdm {

// Stream "Order", little-endian, for each manager whose order is another one, by ID (the root
// last):
//   offset  size  field
//        0     4  ID of the manager
//        4     4  number n of its objects
//        8    4n  their IDs, in order
void SaveOrder(const COIDManager& ids, CZDocument& root, IZStream* stream);

/// Puts the objects of the managers in the stored order. What is stored of objects or managers that
/// are not there is passed over; objects that are not named keep their place before the others.
/// False for a stream that is damaged; the managers before the damage are in order then.
bool LoadOrder(CZDocument& root, IZStream* stream);

}  // namespace zdm
