// Prints the page of the accuracy of the transforms, docs/accuracy.md.
#include <cstdio>

#include "campaigns/accuracy/accuracy.h"

namespace {

void printTable(const accuracy::Transform& transform) {
    std::printf("\n## %s\n\n| size |", transform.name.c_str());
    for (const auto& input : accuracy::inputs()) {
        std::printf(" %s L1 | L2 | L∞ |", input.name.c_str());
    }
    std::printf("\n|---|");
    for (std::size_t i = 0; i < 3 * accuracy::inputs().size(); ++i) std::printf("--:|");
    std::printf("\n");
    for (const accuracy::Size& size : accuracy::sizes()) {
        std::vector<accuracy::Errors> errors;
        for (const auto& input : accuracy::inputs()) {
            errors.push_back(transform.errors(input.make(size.width, size.height)));
        }
        std::printf("%s\n", accuracy::row(size, errors).c_str());
        std::fflush(stdout);
    }
}

}  // namespace

int main() {
    std::printf(
        "# How exact the transforms are\n\n"
        "The library computes in single precision. Each figure compares its result with the same\n"
        "transform in long double: L1 is the sum of the errors' absolute values, L2 the root of "
        "the\n"
        "sum of their squares, L∞ the largest, each divided by that of the exact result. A float "
        "has\n"
        "a relative precision of 6e-08.\n\n"
        "The impulse stands at a third of the width and a fifth of the height, random numbers lie\n"
        "between -1 and 1, the constant is 1/3 - i/7, the ramp rises to the right in its real "
        "part\n"
        "and downward in its imaginary part. A real transform takes the real parts.\n\n"
        "`accuracy_table > docs/accuracy.md` prints this page; the test `Accuracy` fails when an\n"
        "error is more than 5 %% above its figure here.\n");
    for (const accuracy::Transform& transform : accuracy::transforms()) printTable(transform);
    return 0;
}
