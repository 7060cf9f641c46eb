// The bytes of one stream: a window of an opened compound file, pieces of memory where they were
// written, or both. Copies share their pieces until one of them is written.
// Bytes nobody wrote read as zeros and take no memory.
#pragma once

#include "platform/ole/portable/StorageSource.h"
#include "platform/ole/portable/Stream.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace zdm {

class StreamContent {
 public:
  /// Longer streams do not fit a compound file of version 3.
  static constexpr ULONGLONG kMaxSize = 0x7FFFFFFF;
  static constexpr std::size_t kPieceSize = std::size_t{256} << 10;

  StreamContent() = default;
  /// The stream of `size` bytes that begins at sector `start` of `source`.
  StreamContent(std::shared_ptr<const StorageSource> source, ULONG start, ULONGLONG size);

  ULONGLONG Size() const { return size_; }

  /// Reads up to `size` bytes at `offset`; fewer at the end.
  HRESULT Read(ULONGLONG offset, void* data, std::size_t size, std::size_t* read) const;
  /// Writes at `offset`, extending the stream. STG_E_MEDIUMFULL past kMaxSize, and then nothing.
  /// Throws std::bad_alloc; what was written until then stays.
  HRESULT Write(ULONGLONG offset, const void* data, std::size_t size);
  /// Cuts, or extends with zeros. STG_E_MEDIUMFULL past kMaxSize. Throws std::bad_alloc.
  HRESULT SetSize(ULONGLONG size);

  /// Tells `visit(const BYTE*, std::size_t)` the bytes in order, in large pieces, without a copy
  /// where they are in memory. Stops when `visit` answers a failure; returns its answer.
  template <class Visit>
  HRESULT ForEachPiece(Visit visit) const;

 private:
  using Piece = std::vector<BYTE>;  // may be shorter than its range; what is missing is zeros

  HRESULT ReadWindow(ULONGLONG offset, BYTE* data, std::size_t size) const;
  HRESULT OwnPiece(std::size_t index, bool keep, Piece** out);
  /// Bytes of the range of a piece that lie in the window.
  std::size_t WindowBytes(std::size_t index) const;

  std::shared_ptr<const StorageSource> source_;
  ULONG start_ = 0;
  ULONGLONG sourceSize_ = 0;  // of the whole stream in the source
  ULONGLONG windowSize_ = 0;  // of what is still seen of it
  ULONGLONG size_ = 0;
  std::vector<std::shared_ptr<Piece>> pieces_;    // null: from the window, then zeros
  mutable std::vector<StorageSource::Run> runs_;  // found at the first read of the window
};

template <class Visit>
HRESULT StreamContent::ForEachPiece(Visit visit) const {
  constexpr std::size_t kWindowPieces = 4;  // read from the file at once
  std::vector<BYTE> buffer;
  ULONGLONG offset = 0;
  while (offset < size_) {
    const std::size_t index = static_cast<std::size_t>(offset / kPieceSize);
    const bool whole = offset % kPieceSize == 0 && index < pieces_.size() &&
                       pieces_[index] != nullptr &&
                       pieces_[index]->size() == std::min<ULONGLONG>(kPieceSize, size_ - offset);
    std::size_t size = 0;
    HRESULT result = S_OK;
    if (whole) {
      size = pieces_[index]->size();
      result = visit(pieces_[index]->data(), size);
    } else {
      // Only to the next piece in memory, so that it is not copied.
      std::size_t end = index + 1;
      while (end < index + kWindowPieces && (end >= pieces_.size() || pieces_[end] == nullptr))
        ++end;
      buffer.resize((end - index) * kPieceSize);
      result = Read(offset, buffer.data(), buffer.size(), &size);
      if (SUCCEEDED(result)) result = visit(buffer.data(), size);
    }
    if (FAILED(result)) return result;
    offset += size;
  }
  return S_OK;
}

}  // namespace zdm
