// Texts on a terminal.
#pragma once

#include <string>

/// The text with its control characters spelt out, as \x1b: names of files and texts in archives
/// come from anywhere, and must not command a terminal. UTF-8 stays as it is.
std::string printable(const std::string& text);

/// Writes to standard output. Throws a Failure when not all of it could be written.
void printOut(const std::string& text);
