// Numbers on a command line.
#pragma once

#include <functional>
#include <limits>
#include <optional>
#include <string>

#include "parser.h"

/// The number that a text is, from its first to its last character; none for an empty text, for
/// anything besides the number, and for what is not finite.
std::optional<double> numberIn(const std::string& text);

/// What becomes of an option's number.
using TakeNumber = std::function<void(double)>;
using TakeWhole = std::function<void(long)>;

/// An option with a number, or with a whole one. Another text, or a number outside the bounds, is
/// refused by a sentence that names the option.
CLI::Option* addNumber(CLI::App& command, const char* name, const char* help, TakeNumber take,
                       double least = -std::numeric_limits<double>::infinity(),
                       double most = std::numeric_limits<double>::infinity());
CLI::Option* addWhole(CLI::App& command, const char* name, const char* help, TakeWhole take,
                      long least = std::numeric_limits<long>::min(),
                      long most = std::numeric_limits<long>::max());

/// Those that set a variable, which outlives the command, and have no bounds.
template <class Number>
CLI::Option* addNumber(CLI::App& command, const char* name, Number& number, const char* help) {
    return addNumber(command, name, help, [&number](double value) { number = value; });
}
