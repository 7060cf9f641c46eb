// Texts of entities without what only says how they are set.
#pragma once

#include "platform/system/Text.h"

#include <vector>

namespace zdm {

/// Of one line: %%d, %%c, %%p and %%nnn are characters; lines over and under are left out.
WideString ShownLine(WideView text);
/// Of a paragraph, line by line: without fonts, heights, colours; fractions in one line.
/// @param letters  about how many go into a line, which is broken between words; 0 for any number.
std::vector<WideString> ShownParagraph(WideView text, std::size_t letters);

}  // namespace zdm
