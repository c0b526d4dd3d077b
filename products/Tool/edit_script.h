/// Scripts of `edit`: one action a line, in words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The lines of a script, LF or CR LF between them.
std::vector<std::string_view> SplitLines(std::string_view script);

/// The words of a line, in UTF-8; none for an empty line and for one that begins with #. Blanks
/// separate, double quotes enclose a word; inside them a backslash stands before itself, a quote,
/// t, r, n, and before x with two hexadecimal digits: a byte of the document. A line that isn't so,
/// or isn't UTF-8, is ExitCode::no.
std::vector<std::string> SplitWords(std::string_view line);
