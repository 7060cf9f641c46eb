// What the command line prints. Text from documents can hold anything; what would drive a terminal
// is printed as an escape, so that it changes neither the screen nor what stands around it.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace zdm::tool {

using Json = nlohmann::ordered_json;

/// `text` (UTF-8) with control characters, those that turn the direction of writing, and invisible
/// ones as \uXXXX; those in `layout` stay.
std::string Escaped(std::string_view text, std::string_view layout = {});
/// The same in double quotes, with quotes and backslashes escaped: a JSON string.
std::string Quoted(const std::string& text);

/// The shortest number that reads back as the same; a word for what is no number.
Json Number(double value);
Json Number(float value);

enum class Colour { kPlain, kDim, kRed, kYellow, kCyan };
/// Coloured when standard output is a terminal and NO_COLOR is not set.
std::string Painted(Colour colour, const std::string& text);

void PrintLine(const std::string& line);
void PrintJson(const Json& json);
/// One line on stderr, behind the program's name.
void PrintError(const std::string& text);
/// Throws Failure when not all could be written.
void FinishOutput();

}  // namespace zdm::tool
