// The errors of the transforms are those of docs/accuracy.md.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

#include "campaigns/accuracy/accuracy.h"
#include "support/sanitizers.h"

namespace {

// Enough to see a change in seconds; the table's program measures all.
constexpr long kLargestArea = support::kSanitized ? 1 << 10 : 1 << 16;

// The numbers of a row, without its size.
std::vector<double> numbersOf(const std::string& row) {
    std::istringstream cells(row);
    std::string cell;
    std::vector<double> numbers;
    while (std::getline(cells, cell, '|')) numbers.push_back(std::atof(cell.c_str()));
    return {numbers.begin() + 2, numbers.end()};
}

// The rows of the page by transform and size.
std::map<std::string, std::vector<double>> figures() {
    std::ifstream page(MVFREQ_ACCURACY_PAGE);
    std::map<std::string, std::vector<double>> all;
    std::string line, transform;
    while (std::getline(page, line)) {
        if (line.starts_with("## ")) transform = line.substr(3);
        if (line.starts_with("| ") && line.find(" x ") < line.find(" | ")) {
            all[transform + line.substr(1, line.find(" | ") - 1)] = numbersOf(line);
        }
    }
    return all;
}

TEST(Accuracy, IsThatOfThePage) {
    const auto pinned = figures();
    for (const accuracy::Transform& transform : accuracy::transforms()) {
        for (const accuracy::Size& size : accuracy::sizes()) {
            if (static_cast<long>(size.width) * size.height > kLargestArea) continue;
            std::vector<accuracy::Errors> errors;
            for (const auto& input : accuracy::inputs()) {
                errors.push_back(transform.errors(input.make(size.width, size.height)));
            }
            const std::string row = accuracy::row(size, errors);
            const std::string name = transform.name + row.substr(1, row.find(" | ") - 1);
            ASSERT_TRUE(pinned.contains(name)) << name;
            const std::vector<double> expected = pinned.at(name), found = numbersOf(row);
            ASSERT_EQ(found.size(), expected.size()) << name;
            for (std::size_t i = 0; i < found.size(); ++i) {
                EXPECT_LE(found[i], 1.05 * expected[i]) << name << ", number " << i;
            }
        }
    }
}

}  // namespace
