#include "platform/ole/portable/StreamContent.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

namespace zdm {

namespace {

/// Memory that is about to be filled, all of it: sooner made at once than fault by fault. A hint,
/// which may fail.
void MakePresent([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t size) {
#ifdef MADV_POPULATE_WRITE
  static const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto from = reinterpret_cast<std::uintptr_t>(memory);
  const std::uintptr_t first = (from + page - 1) / page * page;
  const std::uintptr_t last = (from + size) / page * page;
  if (first < last) madvise(reinterpret_cast<void*>(first), last - first, MADV_POPULATE_WRITE);
#endif
}

}  // namespace

StreamContent::StreamContent(std::shared_ptr<const StorageSource> source, ULONG start,
                             ULONGLONG size)
    : source_(std::move(source)),
      start_(start),
      sourceSize_(size),
      windowSize_(size),
      size_(size) {}

HRESULT StreamContent::Read(ULONGLONG offset, void* data, std::size_t size,
                            std::size_t* read) const {
  *read = 0;
  if (offset >= size_) return S_OK;
  auto* to = static_cast<BYTE*>(data);
  std::size_t left = static_cast<std::size_t>(std::min<ULONGLONG>(size, size_ - offset));
  while (left != 0) {
    const auto index = static_cast<std::size_t>(offset / kPieceSize);
    std::size_t count = 0;
    if (index < pieces_.size() && pieces_[index] != nullptr) {
      const Piece& piece = *pieces_[index];
      const auto inside = static_cast<std::size_t>(offset % kPieceSize);
      count = std::min(left, kPieceSize - inside);
      const std::size_t kept = inside < piece.size() ? std::min(count, piece.size() - inside) : 0;
      if (kept != 0) std::memcpy(to, piece.data() + inside, kept);
      if (count != kept) std::memset(to + kept, 0, count - kept);
    } else {
      // The window up to the next piece in memory, or zeros behind it.
      const ULONGLONG wanted = (offset + left + kPieceSize - 1) / kPieceSize;
      const std::size_t last = std::min(pieces_.size(), static_cast<std::size_t>(wanted));
      std::size_t end = index + 1;
      while (end < last && pieces_[end] == nullptr) ++end;
      const ULONGLONG limit = end < last ? ULONGLONG{end} * kPieceSize : size_;
      count = static_cast<std::size_t>(std::min<ULONGLONG>(left, limit - offset));
      if (offset < windowSize_) {
        count = static_cast<std::size_t>(std::min<ULONGLONG>(count, windowSize_ - offset));
        const HRESULT result = ReadWindow(offset, to, count);
        if (FAILED(result)) return result;
      } else {
        std::memset(to, 0, count);
      }
    }
    to += count;
    offset += count;
    left -= count;
    *read += count;
  }
  return S_OK;
}

HRESULT StreamContent::ReadWindow(ULONGLONG offset, BYTE* data, std::size_t size) const {
  if (runs_.empty()) runs_ = source_->RunsOf(start_, sourceSize_);
  auto run = std::upper_bound(runs_.begin(), runs_.end(), offset,
                              [](ULONGLONG at, const auto& r) { return at < r.offset; });
  for (--run; size != 0; ++run) {
    const ULONGLONG inside = offset - run->offset;
    const auto count =
        static_cast<std::size_t>(std::min<ULONGLONG>(size, (run + 1)->offset - offset));
    const HRESULT result = source_->Read(run->place + inside, data, count);
    if (FAILED(result)) return result;
    data += count;
    offset += count;
    size -= count;
  }
  return S_OK;
}

std::size_t StreamContent::WindowBytes(std::size_t index) const {
  const ULONGLONG base = ULONGLONG{index} * kPieceSize;
  if (base >= windowSize_) return 0;
  return static_cast<std::size_t>(std::min<ULONGLONG>(kPieceSize, windowSize_ - base));
}

/// The piece `index` for writing, unshared; `keep`: with the bytes it has now.
HRESULT StreamContent::OwnPiece(std::size_t index, bool keep, Piece** out) {
  if (index >= pieces_.size()) pieces_.resize(index + 1);
  std::shared_ptr<Piece>& slot = pieces_[index];
  if (slot == nullptr || slot.use_count() > 1) {
    auto piece = std::make_shared<Piece>();
    // The first piece of a small stream takes no more than it holds.
    if (index != 0 || !keep) piece->reserve(kPieceSize);
    if (!keep) MakePresent(piece->data(), kPieceSize);
    if (keep && slot != nullptr) {
      *piece = *slot;
    } else if (keep && WindowBytes(index) != 0) {
      piece->resize(WindowBytes(index));
      const HRESULT result =
          ReadWindow(ULONGLONG{index} * kPieceSize, piece->data(), piece->size());
      if (FAILED(result)) return result;
    }
    slot = std::move(piece);
  }
  *out = slot.get();
  return S_OK;
}

HRESULT StreamContent::Write(ULONGLONG offset, const void* data, std::size_t size) {
  if (offset > kMaxSize || size > kMaxSize - offset) return STG_E_MEDIUMFULL;
  const auto* from = static_cast<const BYTE*>(data);
  while (size != 0) {
    const auto index = static_cast<std::size_t>(offset / kPieceSize);
    const auto inside = static_cast<std::size_t>(offset % kPieceSize);
    const std::size_t count = std::min(size, kPieceSize - inside);
    Piece* piece = nullptr;
    const HRESULT result = OwnPiece(index, count != kPieceSize, &piece);
    if (FAILED(result)) return result;
    if (piece->size() < inside) piece->resize(inside);
    const std::size_t over = std::min(count, piece->size() - inside);
    if (over != 0) std::memcpy(piece->data() + inside, from, over);
    piece->insert(piece->end(), from + over, from + count);
    from += count;
    offset += count;
    size -= count;
    size_ = std::max(size_, offset);
  }
  return S_OK;
}

HRESULT StreamContent::SetSize(ULONGLONG size) {
  if (size > kMaxSize) return STG_E_MEDIUMFULL;
  if (size < size_) {
    const auto pieces = static_cast<std::size_t>((size + kPieceSize - 1) / kPieceSize);
    const auto inside = static_cast<std::size_t>(size % kPieceSize);
    if (inside != 0 && pieces <= pieces_.size() && pieces_[pieces - 1] != nullptr &&
        pieces_[pieces - 1]->size() > inside) {
      Piece* last = nullptr;
      const HRESULT result = OwnPiece(pieces - 1, true, &last);
      if (FAILED(result)) return result;
      last->resize(inside);
    }
    if (pieces < pieces_.size()) pieces_.resize(pieces);
    windowSize_ = std::min(windowSize_, size);
  }
  size_ = size;
  return S_OK;
}

}  // namespace zdm
