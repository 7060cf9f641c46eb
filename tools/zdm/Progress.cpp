#include "tools/zdm/Progress.h"

#include "tools/zdm/Terminal.h"

#include <algorithm>
#include <cstdio>

namespace zdm::tool {

ProgressBar::~ProgressBar() {
  if (width_ > 0) std::fprintf(stderr, "\r%*s\r", static_cast<int>(width_), "");
}

void ProgressBar::Step(LONG steps) {
  done_ += steps;
  if (Clock::now() >= next_) Show();
}

void ProgressBar::Show() {
  static const bool isWatched = IsTerminal(stderr);
  if (!isWatched) return;
  std::string line = what_;
  if (range_ > 0) {
    const auto percent = static_cast<int>(std::min(done_ * 100 / range_, LONGLONG{100}));
    const auto filled = static_cast<std::size_t>(percent * 3 / 10);
    line += " [" + std::string(filled, '#') + std::string(30 - filled, '.') + "] " +
            std::to_string(percent) + " %";
  } else {
    line += " ...";
  }
  std::fprintf(stderr, "\r%s", line.c_str());
  std::fflush(stderr);
  width_ = std::max(width_, line.size());
  next_ = Clock::now() + std::chrono::milliseconds(100);
}

}  // namespace zdm::tool
