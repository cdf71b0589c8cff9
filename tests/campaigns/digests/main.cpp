// Prints the digests of the library's results, or compares them with those of a file.
//
//     results_digest            prints them
//     results_digest <file>     fails when they differ
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <sstream>

#include "campaigns/digests/sections.h"

namespace {

std::string lineOf(const std::string& name, const digest::Section& section) {
    char text[128];
    std::snprintf(text, sizeof text, "%016llx %6ld %s\n",
                  static_cast<unsigned long long>(section.digest), section.cases, name.c_str());
    return text;
}

// Every path must give the one line of the kernel: whichever of them a processor has.
std::string kernelLines() {
    std::set<std::string> lines;
    for (const digest::Section& path : digest::kernelSections()) {
        std::cerr << lineOf(path.name, path);
        lines.insert(lineOf("kernel", path));
    }
    std::string text;
    for (const std::string& line : lines) text += line;
    return text;
}

std::string allLines() {
    std::string text = kernelLines();
    for (const digest::Section& section : digest::librarySections()) {
        text += lineOf(section.name, section);
    }
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string found = allLines();
    std::cout << found;
    if (argc < 2) return 0;
    std::ifstream file(argv[1]);
    const std::string expected(std::istreambuf_iterator<char>(file), {});
    if (found == expected) return 0;
    std::cout << "The file says:\n" << expected;
    return 1;
}
