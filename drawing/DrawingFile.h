// What can be said of the bytes of a drawing file before anything is made of them.
#pragma once

#include "drawing/CZDMDrawing.h"
#include "drawing/Warnings.h"

#include <filesystem>

namespace zdm {

struct FileFacts {
  DrawingSource source;
  TextCodec codec;
};

/// The whole file. Throws DocumentError.
std::string ReadFile(const std::filesystem::path& path);

/// Throws DocumentError(kNotDocument) for what is no ASCII DXF.
/// @param name      of the file, UTF-8.
/// @param codePage  the name of the code page of a file that is neither of AC1021 or later, which
/// is
///     UTF-8, nor names its own; empty for Latin-1.
FileFacts LookAt(std::string_view bytes, const std::string& name, std::string_view codePage,
                 Warnings* warnings);

}  // namespace zdm
