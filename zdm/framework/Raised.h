// Marks an object for the time of a call, so that it is known when it is met again meanwhile.
#pragma once

namespace zdm {

/// Sets a flag for as long as it lives.
class Raised {
 public:
  explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
  ~Raised() { flag_ = false; }
  Raised(const Raised&) = delete;
  Raised& operator=(const Raised&) = delete;

 private:
  bool& flag_;
};

}  // namespace zdm
