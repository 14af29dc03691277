#pragma once

#include <string>
#include <string_view>

namespace planilhas {

// A text that a spreadsheet would take for a formula when it opens a file of text (it begins with = + - @, a tab or a
// line break) with an apostrophe before it. One that already has apostrophes before such a beginning gets a further
// one, so that Rearma gives every text back as it was.
std::string Desarma(std::string_view texto);
// The text that Desarma was given.
std::string Rearma(std::string_view desarmado);

} // namespace planilhas
