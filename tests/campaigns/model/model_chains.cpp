// Runs random chains by hand: model_chains COUNT [SEED]. Prints each one that shows a difference,
// shrunk, and what the operations came to.
#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "campaigns/model/chain.h"

namespace {

constexpr long kPrinted = 10;

void print(unsigned long seed, const model::Chain& chain) {
    const model::Chain shortest = model::shrunk(chain);
    std::printf("chain %lu, %s\nEXPECT_EQ(differenceOf(%s), \"\");\n", seed,
                differenceOf(shortest).c_str(), textOf(shortest).c_str());
    std::fflush(stdout);
}

void print(const model::Tally& tally) {
    for (const auto& [name, outcomes] : tally) {
        std::printf("%-24s %10ld good %10ld refused %8ld stopped\n", name.c_str(), outcomes.good,
                    outcomes.refused, outcomes.stopped);
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 2) {
        std::fputs("usage: model_chains COUNT [SEED]\n", stderr);
        return 2;
    }
    const auto chains = std::strtoul(arguments[1], nullptr, 10);
    const auto first = count > 2 ? std::strtoul(arguments[2], nullptr, 10) : 0UL;
    const auto begin = std::chrono::steady_clock::now();
    model::Tally tally;
    long steps = 0;
    long differences = 0;
    for (unsigned long seed = first; seed < first + chains; ++seed) {
        const model::Chain chain = model::drawnChain(seed);
        steps += static_cast<long>(chain.size());
        if (differenceOf(chain, &tally).empty()) continue;
        if (++differences <= kPrinted) print(seed, chain);
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    print(tally);
    std::printf("%lu chains, %ld steps, %ld differences, %.1f s\n", chains, steps, differences,
                seconds.count());
    return differences == 0 ? 0 : 1;
}
