// ASCII DXF into a document. The first import makes its drawing; further ones merge into that.
#pragma once

#include "drawing/CZDMDrawing.h"
#include "drawing/Warnings.h"

#include <filesystem>

namespace zdm {

struct ImportOptions {
  std::string codePage;  // for files that do not name theirs, such as "GBK"; empty for Latin-1
};

struct ImportReport {
  CZDMDrawing* drawing;  // borrowed
  DrawingSource source;  // what the file says of itself
  std::size_t made;      // objects; what was there already by name is not counted
  TextCodec codec;       // in which the subjects of the warnings are
  std::vector<Warning> warnings;
};

/// Throws DocumentError: kNotDocument, and nothing changes, for what is no ASCII DXF.
/// @param name  of the file, UTF-8.
ImportReport ImportDrawing(CZDocument& document, std::string_view bytes, const std::string& name,
                           const ImportOptions& options = {});
ImportReport ImportDrawing(CZDocument& document, const std::filesystem::path& path,
                           const ImportOptions& options = {});

}  // namespace zdm
