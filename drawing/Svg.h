// A picture of a drawing, to recognise it by.
#pragma once

#include <string>

class CPIDManager;
class CZDMDrawing;

namespace zdm {

/// An SVG file of model space on white paper.
std::string SvgOf(CZDMDrawing& drawing, CPIDManager& paths);

}  // namespace zdm
