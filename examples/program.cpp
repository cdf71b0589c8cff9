// What every example does around its own work.
#include "program.h"

#include <base/exception.h>

#include <algorithm>
#include <exception>
#include <iostream>
#include <string_view>

namespace {

/// What the library throws is no std::exception; pictures throw those.
void describeException(std::ostream& out) {
    try {
        throw;
    } catch (const mvException& error) {
        out << error;
    } catch (const std::exception& error) {
        out << error.what();
    }
}

}  // namespace

int runExample(int argc, char** argv, const char* arguments, void (*work)(char** argv)) {
    const std::string_view words = arguments;
    if (argc != 2 + std::ranges::count(words, ' ')) {
        std::cerr << "usage: " << argv[0] << ' ' << words << '\n';
        return 2;
    }
    try {
        work(argv);
        return 0;
    } catch (...) {
        std::cerr << argv[0] << ": ";
        describeException(std::cerr);
        std::cerr << '\n';
        return 1;
    }
}
