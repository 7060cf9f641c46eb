// A bar on stderr for what takes longer than a second, when stderr is a terminal.
#pragma once

#include "zdm/framework/IZObjectImpl.h"
#include "zdm/host/IZProgressMeter.h"

#include <chrono>
#include <string>
#include <utility>

namespace zdm::tool {

class ProgressBar : public IZObjectImpl<IZProgressMeter> {
 public:
  /// @param what  in a word.
  explicit ProgressBar(std::string what) : what_(std::move(what)) {}
  /// The line is gone again.
  ~ProgressBar() override;

  void SetRange(LONG range) override { range_ = range; }
  void Step(LONG steps) override;

 private:
  void Show();

  using Clock = std::chrono::steady_clock;

  std::string what_;
  LONGLONG range_ = 0;
  LONGLONG done_ = 0;
  Clock::time_point next_ = Clock::now() + std::chrono::seconds(1);  // when to draw
  std::size_t width_ = 0;                                            // of the line drawn
};

}  // namespace zdm::tool
