// A list of reference pointers: each node owns one reference of its element, which may be null.
#pragma once

#include "zdm/framework/CZAtlList.h"
#include "zdm/framework/ZRefPtr.h"

template <class Elem>
class CZList : public CZAtlList<ZRefPtr<Elem>, CDefaultElementTraits<ZRefPtr<Elem>>> {
 public:
  static constexpr ULONG kBlockSize = 10;  // list nodes per allocation, alike for every collection

  explicit CZList(unsigned int blockSize = kBlockSize)
      : CZAtlList<ZRefPtr<Elem>, CDefaultElementTraits<ZRefPtr<Elem>>>(blockSize) {}

  /// Appends every element of `other`, with a reference each; itself: nothing changes.
  void AddTailList(const CZList& other) { this->CZAtlList<ZRefPtr<Elem>>::AddTailList(&other); }
};
