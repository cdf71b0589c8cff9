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

using digest::Section;

// Every path must give the one line of them all: whichever of them a processor has.
std::string oneLine(const std::string& name, const std::vector<Section>& paths) {
    std::set<std::string> lines;
    for (const Section& path : paths) {
        std::cerr << lineOf(path.name, path);
        lines.insert(lineOf(name, path));
    }
    std::string text;
    for (const std::string& line : lines) text += line;
    return text;
}

std::string lines(const std::vector<Section>& sections) {
    std::string text;
    for (const Section& section : sections) text += lineOf(section.name, section);
    return text;
}

std::string allLines() {
    return oneLine("kernel", digest::kernelSections()) + lines(digest::librarySections()) +
           oneLine("pictures without a plane", digest::planelessSections()) +
           lines(digest::pictureSections());
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
