// Documents as the subcommands open and save them: with a progress bar, and by the file names and
// IDs of a command line.
#pragma once

#include "document/Document.h"
#include "drawing/CZDMDrawing.h"

#include <filesystem>
#include <string>

namespace zdm::tool {

/// @param name  UTF-8.
std::filesystem::path PathOf(const std::string& name);

Document Open(const std::string& file);
/// Where it was opened.
void Save(Document& document);

/// The valid object of that ID, -1 for the document itself. Throws Failure(kNoObject).
IZDMObject* Require(const Document& document, LONG id);
/// Throws Failure(kNoObject) for a document without one.
CZDMDrawing& RequireDrawing(const Document& document);
/// Throws Failure(kRefused) when there is a file already.
void RequireNoFile(const std::string& file);

}  // namespace zdm::tool
