#include "bench/workload/PlainPacked.h"

#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

namespace workload {

namespace {

struct Counts {
  std::uint64_t ids;
  std::uint64_t heads;
  std::uint64_t objects;
  std::uint64_t text;
};

class File {
 public:
  File(const std::filesystem::path& path, int flags) : handle_(open(path.c_str(), flags, 0666)) {
    if (handle_ < 0) throw std::runtime_error("cannot open " + path.string());
  }
  ~File() { close(handle_); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  operator int() const { return handle_; }

 private:
  int handle_;
};

template <class T>
iovec Part(const std::vector<T>& elements) {
  return {const_cast<T*>(elements.data()), elements.size() * sizeof(T)};
}

void Expect(bool isDone) {
  if (!isDone) throw std::runtime_error("a short read or write");
}

template <std::size_t Count>
ssize_t Size(const iovec (&parts)[Count]) {
  std::size_t size = 0;
  for (const iovec& part : parts) size += part.iov_len;
  return static_cast<ssize_t>(size);
}

}  // namespace

PlainPacked::Text PlainPacked::Add(const std::u16string& text) {
  const Text place = {static_cast<std::uint32_t>(text_.size()),
                      static_cast<std::uint32_t>(text.size())};
  text_.insert(text_.end(), text.begin(), text.end());
  return place;
}

void PlainPacked::Build(const std::vector<ObjectPlan>& plans) {
  const auto addHeads = [&](const char* format, std::uint32_t count) {
    for (std::uint32_t i = 0; i < count; ++i) {
      ids_.push_back(static_cast<std::uint32_t>(ids_.size()) + 1);
      heads_.push_back(Add(NameOf(format, i)));
    }
  };
  addHeads("Category-%02u", kCategories);
  addHeads("Definition-%02u", kDefinitions);
  addHeads("Container-%02u", kContainers);
  std::uint32_t i = 0;
  for (const ObjectPlan& plan : plans) {
    ids_.push_back(static_cast<std::uint32_t>(ids_.size()) + 1);
    Object object;
    object.name = Add(NameOf("Object-%08u", i));
    object.owner = kFirstContainer - 1 + i % kContainers;
    for (std::size_t k = 0; k < 3; ++k) object.references[k] = plan.references[k] - 1;
    object.category = plan.category - 1;
    object.referred = plan.referred - 1;
    object.doubleDefinitions = plan.doubleDefinitions;
    object.longDefinitions = plan.longDefinitions;
    object.stringDefinitions = plan.stringDefinitions;
    object.boolDefinition = plan.boolDefinition;
    object.referenceDefinition = plan.referenceDefinition;
    object.diffusible = 1;
    object.flag = plan.flag;
    object.longs = plan.longs;
    object.doubles = plan.doubles;
    for (std::size_t k = 0; k < 2; ++k) object.strings[k] = Add(WideText(plan.strings[k]));
    object.area = plan.area;
    object.note = Add(WideText(plan.note));
    objects_.push_back(object);
    ++i;
  }
}

void PlainPacked::Save(const std::filesystem::path& path) const {
  const File file(path, O_WRONLY | O_CREAT | O_TRUNC);
  Counts counts = {ids_.size(), heads_.size(), objects_.size(), text_.size()};
  const iovec parts[] = {
      {&counts, sizeof(counts)}, Part(ids_), Part(heads_), Part(objects_), Part(text_)};
  Expect(writev(file, parts, std::size(parts)) == Size(parts));
}

void PlainPacked::Load(const std::filesystem::path& path) {
  const File file(path, O_RDONLY);
  Counts counts;
  Expect(pread(file, &counts, sizeof(counts), 0) == sizeof(counts));
  ids_.resize(counts.ids);
  heads_.resize(counts.heads);
  objects_.resize(counts.objects);
  text_.resize(counts.text);
  const iovec parts[] = {Part(ids_), Part(heads_), Part(objects_), Part(text_)};
  Expect(preadv(file, parts, std::size(parts), sizeof(counts)) == Size(parts));
}

PlainPacked::Position PlainPacked::Find(std::uint32_t id) const {
  return static_cast<Position>(std::ranges::lower_bound(ids_, id) - ids_.begin());
}

std::uint64_t PlainPacked::Walk() const {
  std::uint64_t sum = 0;
  for (const Object& object : objects_) {
    for (const Position reference : object.references) sum += ids_[reference];
    sum += std::uint64_t{ids_[object.category]} + ids_[object.referred];
  }
  return sum;
}

std::uint64_t PlainPacked::ReverseScan(Position target) const {
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < objects_.size(); ++i) {
    const Object& object = objects_[i];
    const bool refers = std::ranges::find(object.references, target) != object.references.end() ||
                        object.referred == target;
    if (refers) sum += ids_[kHeads + i];
  }
  return sum;
}

/// The objects that refer to each, once each, one run after the other.
void PlainPacked::MakeIndex() {
  const auto offer = [this](auto take) {
    for (std::size_t i = 0; i < objects_.size(); ++i) {
      const Object& object = objects_[i];
      const Position targets[] = {object.references[0], object.references[1], object.references[2],
                                  object.referred};
      for (std::size_t k = 0; k < std::size(targets); ++k) {
        const bool isNew = std::find(targets, targets + k, targets[k]) == targets + k;
        if (isNew && targets[k] >= kHeads) {
          take(targets[k] - kHeads, static_cast<Position>(kHeads + i));
        }
      }
    }
  };
  firstReferrer_.assign(objects_.size() + 1, 0);
  offer([this](std::size_t target, Position) { ++firstReferrer_[target + 1]; });
  for (std::size_t i = 1; i < firstReferrer_.size(); ++i)
    firstReferrer_[i] += firstReferrer_[i - 1];
  referrers_.resize(firstReferrer_.back());
  std::vector<std::uint32_t> next(firstReferrer_.begin(), firstReferrer_.end() - 1);
  offer([&](std::size_t target, Position from) { referrers_[next[target]++] = from; });
}

std::uint64_t PlainPacked::Reverse(Position target) const {
  std::uint64_t sum = 0;
  const std::size_t place = target - kHeads;
  for (std::uint32_t k = firstReferrer_[place]; k < firstReferrer_[place + 1]; ++k) {
    sum += ids_[referrers_[k]];
  }
  return sum;
}

template <class Next>
std::uint64_t PlainPacked::Reach(Position start, Next next) const {
  std::vector<bool> isReached(objects_.size());
  std::vector<Position> open = {start};
  isReached[start - kHeads] = true;
  std::uint64_t sum = 0;
  while (!open.empty()) {
    const Position position = open.back();
    open.pop_back();
    if (position != start) sum += ids_[position];
    next(position - kHeads, [&](Position other) {
      if (other < kHeads || isReached[other - kHeads]) return;
      isReached[other - kHeads] = true;
      open.push_back(other);
    });
  }
  return sum;
}

std::uint64_t PlainPacked::Dependents(Position start) const {
  return Reach(start, [this](std::size_t place, auto take) {
    for (std::uint32_t k = firstReferrer_[place]; k < firstReferrer_[place + 1]; ++k) {
      take(referrers_[k]);
    }
  });
}

std::uint64_t PlainPacked::Closure(Position start) const {
  return Reach(start, [this](std::size_t place, auto take) {
    const Object& object = objects_[place];
    for (const Position reference : object.references) take(reference);
    take(object.referred);
  });
}

void PlainPacked::Copy() {
  const auto count = static_cast<Position>(objects_.size());
  const auto copyText = [this](Text& place) {
    const auto first = static_cast<std::uint32_t>(text_.size());
    text_.resize(text_.size() + place.length);
    std::copy_n(text_.begin() + place.first, place.length, text_.begin() + first);
    place.first = first;
  };
  const auto toCopy = [&](Position& position) {
    if (position >= kHeads) position += count;
  };
  ids_.reserve(ids_.size() + count);
  objects_.reserve(2 * std::size_t{count});
  text_.reserve(2 * text_.size());
  for (Position i = 0; i < count; ++i) {
    ids_.push_back(ids_[kHeads + i] + count);
    Object copy = objects_[i];
    for (Position& reference : copy.references) toCopy(reference);
    toCopy(copy.referred);
    copyText(copy.name);
    for (Text& text : copy.strings) copyText(text);
    copyText(copy.note);
    objects_.push_back(copy);
  }
}

}  // namespace workload
