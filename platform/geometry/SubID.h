// Names a part of an object's geometry: an edge, a face, a vertex.
// Holds the kind of the part and a short path of indices that leads to it, outermost first, such as
// the fourth edge of the second loop of the first face: kEdge, {0, 1, 3}. What an index counts is
// known to the object alone. A value without virtual operations and without memory of its own.
// Stream form: above SaveSubID in SubID.cpp.
#pragma once

#include "platform/ole/ole.h"

#include <array>
#include <compare>
#include <initializer_list>
#include <tuple>

struct IZStream;

class ZDM_API SubID {
 public:
  /// Any number may stand here: those without a name are carried, stored and compared like others,
  /// and those from kFirstHostKind on are the host's to define.
  enum Kind : USHORT {
    kNone = 0,
    kVertex = 1,
    kEdge = 2,
    kFace = 3,
    kLoop = 4,
    kBody = 5,
    kFirstHostKind = 0x8000
  };
  static constexpr ULONG kMaxDepth = 16;

  SubID() = default;
  /// Throws CAtlException(E_INVALIDARG) for more than kMaxDepth indices.
  explicit SubID(Kind kind, std::initializer_list<ULONG> path = {});

  Kind GetKind() const { return kind_; }
  void SetKind(Kind kind) { kind_ = kind; }
  /// Number of indices, at most kMaxDepth.
  ULONG GetDepth() const { return depth_; }
  /// The index at `level`, counted from 0, the outermost; 0 past the depth.
  ULONG GetIndex(ULONG level) const { return level < depth_ ? path_[level] : 0; }
  /// Adds the innermost index. E_INVALIDARG, and nothing changes, at kMaxDepth.
  HRESULT Append(ULONG index);

  /// A copy for the caller to delete. Throws CAtlException(E_OUTOFMEMORY) without memory.
  SubID* Clone() const;
  /// Same kind and same path. Null is the whole object and so never the same as a SubID.
  bool IsSame(const SubID* other) const { return other != nullptr && *this == *other; }
  /// A strict total order: by kind, then by depth, then by the indices, outermost first.
  friend std::strong_ordering operator<=>(const SubID& a, const SubID& b) {
    return std::tie(a.kind_, a.depth_, a.path_) <=> std::tie(b.kind_, b.depth_, b.path_);
  }
  friend bool operator==(const SubID&, const SubID&) = default;

 private:
  Kind kind_ = kNone;
  USHORT depth_ = 0;
  std::array<ULONG, kMaxDepth> path_ = {};  // 0 past the depth, so that comparisons see the path
};

/// Writes `subId`, which may be null.
ZDM_API void SaveSubID(IZStream* stream, const SubID* subId);
/// Reads what SaveSubID wrote. `*out`: null, or a SubID for the caller to delete; what it held
/// before is overwritten, not deleted. Damage and a stream that ends early throw
/// CAtlException(E_FAIL), with `*out` null.
ZDM_API void LoadSubID(IZStream* stream, SubID** out);
