// Help texts on narrow terminals.
#pragma once

#include <string>

/// The lines of a help text, broken at spaces where they are longer than `columns`. What describes
/// an option goes on where it began, at column 30.
std::string wrapped(const std::string& text, std::size_t columns);
