// What became of a reference that leads out of a set of objects which is copied or merged.
#pragma once

namespace zdm {

enum class ReferenceFate {
  kKept,         // it still refers to that object
  kCounterpart,  // to what stands for it in the other document
  kCut,          // to nothing
};

}  // namespace zdm
