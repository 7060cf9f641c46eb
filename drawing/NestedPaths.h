// The paths of nested inserts from model space: an object inside a block is named by the inserts
// that lead to it.
#pragma once

#include "drawing/CZDMDrawing.h"
#include "drawing/Warnings.h"

class CPIDManager;

namespace zdm {

/// The inserts in model space (borrowed), in order.
std::vector<IZDMObject*> InsertsOfModel(CZDMDrawing& drawing);
/// What a manager holds that shows a block by inserting it, in order.
std::vector<IZDMObject*> InsertsIn(IZDMObjMgr& manager);

/// Pools the path of every insert that is reached from model space, outer ones first. A path ends
/// where a block comes back to itself; at most kMostSteps records go into all paths together.
void PoolPaths(CZDMDrawing& drawing, CPIDManager& paths, Warnings* warnings);

constexpr std::size_t kMostSteps = 1'000'000;

}  // namespace zdm
