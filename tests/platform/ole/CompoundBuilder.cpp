#include "CompoundBuilder.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zdm::test {

Bytes Pattern(std::size_t size, unsigned seed) {
  Bytes bytes(size);
  unsigned state = seed * 2654435761U + 12345;
  for (BYTE& byte : bytes) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<BYTE>(state >> 24);
  }
  return bytes;
}

Name Numbered(ULONG number) {
  Name name = OLESTR("s");
  for (const char digit : std::to_string(number)) name += static_cast<OLECHAR>(digit);
  return name;
}

void Put16(Bytes& file, std::size_t at, USHORT value) {
  file[at] = static_cast<BYTE>(value);
  file[at + 1] = static_cast<BYTE>(value >> 8);
}

void Put32(Bytes& file, std::size_t at, ULONG value) {
  for (int i = 0; i < 4; ++i)
    file[at + static_cast<std::size_t>(i)] = static_cast<BYTE>(value >> (8 * i));
}

ULONG Get32(const Bytes& file, std::size_t at) {
  return ULONG{file[at]} | ULONG{file[at + 1]} << 8 | ULONG{file[at + 2]} << 16 |
         ULONG{file[at + 3]} << 24;
}

ULONG CompoundBuilder::Add(ULONG parent, Name name, bool storage, Bytes bytes) {
  elements_.push_back({parent, std::move(name), storage, std::move(bytes)});
  return static_cast<ULONG>(elements_.size() - 1);
}

ULONG CompoundBuilder::Reserve(ULONG count) {
  if (count == 0) return kEndOfChain;
  const ULONG start = sectors_;
  for (ULONG i = 1; i < count; ++i) fat_.push_back(start + i);
  fat_.push_back(kEndOfChain);
  sectors_ += count;
  return start;
}

void CompoundBuilder::LinkSiblings() {
  for (Element& element : elements_) element.left = element.right = element.child = kNoEntry;
  std::map<ULONG, std::vector<ULONG>> families;
  for (ULONG i = 1; i < elements_.size(); ++i) families[elements_[i].parent].push_back(i);
  for (auto& [parent, family] : families) {
    std::sort(family.begin(), family.end(), [&](ULONG a, ULONG b) {
      return CompareElementNames(elements_[a].name, elements_[b].name) < 0;
    });
    if (chain_) {
      elements_[parent].child = family[0];
      for (std::size_t i = 1; i < family.size(); ++i) elements_[family[i - 1]].right = family[i];
      continue;
    }
    struct Range {
      std::size_t begin, end;
      ULONG* link;
    };
    std::vector<Range> ranges = {{0, family.size(), &elements_[parent].child}};
    while (!ranges.empty()) {
      const Range range = ranges.back();
      ranges.pop_back();
      if (range.begin == range.end) continue;
      const std::size_t middle = (range.begin + range.end) / 2;
      *range.link = family[middle];
      ranges.push_back({range.begin, middle, &elements_[family[middle]].left});
      ranges.push_back({middle + 1, range.end, &elements_[family[middle]].right});
    }
  }
}

Bytes CompoundBuilder::Build() {
  sectors_ = 0;
  fat_.clear();
  LinkSiblings();

  Bytes miniStream;
  std::vector<ULONG> miniFat;
  for (Element& element : elements_) {
    if (element.bytes.empty() || element.bytes.size() >= kMiniStreamCutoff) continue;
    element.start = static_cast<ULONG>(miniFat.size());
    const std::size_t count = (element.bytes.size() + 63) / 64;
    for (std::size_t i = 1; i < count; ++i)
      miniFat.push_back(element.start + static_cast<ULONG>(i));
    miniFat.push_back(kEndOfChain);
    miniStream.insert(miniStream.end(), element.bytes.begin(), element.bytes.end());
    miniStream.resize(miniFat.size() * 64);
  }

  const ULONG directorySectors = SectorsOf(elements_.size() * 128);
  const ULONG miniFatSectors = SectorsOf(miniFat.size() * 4);
  const ULONG directoryStart = Reserve(directorySectors);
  miniFatStart_ = Reserve(miniFatSectors);
  elements_[0].start = Reserve(SectorsOf(miniStream.size()));
  for (Element& element : elements_) {
    if (element.bytes.size() >= kMiniStreamCutoff)
      element.start = Reserve(SectorsOf(element.bytes.size()));
  }
  const ULONG perSector = static_cast<ULONG>(sectorSize() / 4);
  const ULONG zeroSectors = SectorsOf(zeros_);
  ULONG fatSectors = 1;
  ULONG difatSectors = 0;
  while (fatSectors * perSector < sectors_ + fatSectors + difatSectors + zeroSectors) {
    ++fatSectors;
    difatSectors = fatSectors <= 109 ? 0 : (fatSectors - 109 + perSector - 2) / (perSector - 1);
  }
  fatStart_ = sectors_;
  fat_.insert(fat_.end(), fatSectors, kFatSector);
  difatStart_ = difatSectors == 0 ? kEndOfChain : fatStart_ + fatSectors;
  fat_.insert(fat_.end(), difatSectors, kDifatSector);
  sectors_ += fatSectors + difatSectors;
  Bytes file(PlaceOf(sectors_), 0);
  if (zeros_ != 0) elements_[zerosEntry_].start = Reserve(zeroSectors);
  fat_.resize(std::size_t{fatSectors} * perSector, kFreeSector);
  constexpr BYTE kSignature[8] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
  std::copy(std::begin(kSignature), std::end(kSignature), file.begin());
  Put16(file, 24, 0x3E);
  Put16(file, 26, shift_ == 9 ? 3 : 4);
  Put16(file, 28, 0xFFFE);
  Put16(file, 30, static_cast<USHORT>(shift_));
  Put16(file, 32, 6);
  Put32(file, 40, shift_ == 9 ? 0 : directorySectors);
  Put32(file, 44, fatSectors);
  Put32(file, 48, directoryStart);
  Put32(file, 56, kMiniStreamCutoff);
  Put32(file, 60, miniFatStart_);
  Put32(file, 64, miniFatSectors);
  Put32(file, 68, difatStart_);
  Put32(file, 72, difatSectors);
  for (ULONG i = 0; i < 109; ++i)
    Put32(file, 76 + std::size_t{4} * i, i < fatSectors ? fatStart_ + i : kFreeSector);
  for (ULONG d = 0, i = 109; d < difatSectors; ++d) {
    const std::size_t at = PlaceOf(difatStart_ + d);
    for (ULONG j = 0; j + 1 < perSector; ++j, ++i) {
      Put32(file, at + std::size_t{4} * j, i < fatSectors ? fatStart_ + i : kFreeSector);
    }
    Put32(file, at + sectorSize() - 4, d + 1 < difatSectors ? difatStart_ + d + 1 : kEndOfChain);
  }
  for (std::size_t i = 0; i < fat_.size(); ++i) Put32(file, PlaceOf(fatStart_) + 4 * i, fat_[i]);
  for (std::size_t i = 0; i < SectorsOf(miniFat.size() * 4) * sectorSize() / 4; ++i) {
    Put32(file, MiniFatAt(0) + 4 * i, i < miniFat.size() ? miniFat[i] : kFreeSector);
  }
  if (!miniStream.empty()) {
    std::copy(miniStream.begin(), miniStream.end(),
              file.begin() + static_cast<std::ptrdiff_t>(PlaceOf(elements_[0].start)));
  }
  for (ULONG i = 0; i < directorySectors * sectorSize() / 128; ++i) {
    const std::size_t at = EntryAt(i);
    for (const std::size_t link : {68, 72, 76}) Put32(file, at + link, kNoEntry);
    if (i >= elements_.size()) continue;
    const Element& element = elements_[i];
    for (std::size_t j = 0; j < element.name.size(); ++j) {
      Put16(file, at + 2 * j, static_cast<USHORT>(element.name[j]));
    }
    Put16(file, at + 64, static_cast<USHORT>(2 * element.name.size() + 2));
    file[at + 66] = i == 0 ? kEntryRoot : element.storage ? kEntryStorage : kEntryStream;
    file[at + 67] = 1;
    Put32(file, at + 68, element.left);
    Put32(file, at + 72, element.right);
    Put32(file, at + 76, element.child);
    Put32(file, at + 116, i == 0 || !element.storage ? element.start : 0);
    ULONGLONG size = i == 0 ? miniStream.size() : element.bytes.size();
    if (i != 0 && i == zerosEntry_) size = zeros_;
    Put32(file, at + 120, static_cast<ULONG>(size));
    Put32(file, at + 124, static_cast<ULONG>(size >> 32));
    if (element.bytes.size() >= kMiniStreamCutoff) {
      std::copy(element.bytes.begin(), element.bytes.end(),
                file.begin() + static_cast<std::ptrdiff_t>(PlaceOf(element.start)));
    }
  }
  return file;
}

}  // namespace zdm::test
