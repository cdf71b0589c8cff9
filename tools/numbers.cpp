// Numbers on a command line.
#include "numbers.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <cmath>
#include <sstream>
#include <string_view>
#include <utility>

namespace {

template <class Number>
std::optional<Number> parsed(std::string_view text) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

[[noreturn]] void refuse(const char* name, const std::string& complaint) {
    throw CLI::ValidationError(name, complaint);
}

template <class Number>
std::string rangeText(Number least, Number most) {
    std::ostringstream text;
    text << least << " to " << most;
    return text.str();
}

template <class Number>
void requireWithin(const char* name, const std::string& text, Number number, Number least,
                   Number most) {
    if (number >= least && number <= most) return;
    refuse(name, text + " is not within " + rangeText(least, most));
}

}  // namespace

std::optional<double> numberIn(const std::string& text) {
    const std::optional<double> number = parsed<double>(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

CLI::Option* addNumber(CLI::App& command, const char* name, const char* help, TakeNumber take,
                       double least, double most) {
    const auto read = [=, take = std::move(take)](const std::string& text) {
        const std::optional<double> number = numberIn(text);
        if (!number) refuse(name, "'" + text + "' is no number");
        requireWithin(name, text, *number, least, most);
        take(*number);
    };
    return command.add_option_function<std::string>(name, read, help)->type_name("NUMBER");
}

CLI::Option* addWhole(CLI::App& command, const char* name, const char* help, TakeWhole take,
                      long least, long most) {
    const auto read = [=, take = std::move(take)](const std::string& text) {
        const std::optional<long> number = parsed<long>(text);
        if (!number) refuse(name, "'" + text + "' is no whole number");
        requireWithin(name, text, *number, least, most);
        take(*number);
    };
    return command.add_option_function<std::string>(name, read, help)->type_name("INT");
}
