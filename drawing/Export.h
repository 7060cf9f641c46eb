// The drawing of a document as ASCII DXF: the groups of its files as they were, but for what was
// changed since.
#pragma once

#include <filesystem>
#include <string>

class CZDMDrawing;

namespace zdm {

std::string ExportDrawing(CZDMDrawing& drawing);
/// In place of any file there. Throws DocumentError.
void ExportDrawing(CZDMDrawing& drawing, const std::filesystem::path& path);

}  // namespace zdm
