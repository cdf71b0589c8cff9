// Random chains of operations, done by the library and by the model.
#include <gtest/gtest.h>

#include <vector>

#include "campaigns/model/chain.h"

namespace {

using model::Chain;
using model::differenceOf;
using model::Tally;

TEST(Model, ChainsOfOperationsDoWhatItSays) {
    Tally tally;
    for (unsigned long seed = 0; seed < 2000; ++seed) {
        const Chain chain = model::drawnChain(seed);
        if (differenceOf(chain, &tally).empty()) continue;
        const Chain shortest = model::shrunk(chain);
        FAIL() << "chain " << seed << ", " << differenceOf(shortest) << "\n"
               << "EXPECT_EQ(differenceOf(" << textOf(shortest) << "), \"\");";
    }
    for (const model::Operation& operation : model::operations()) {
        EXPECT_GE(tally[operation.name].good, 5) << operation.name << " hardly ever succeeds";
    }
}

// Where library and model once said different things, shrunk.
TEST(Model, SaysTheSameOfChainsThatDiffered) {
    const std::vector<Chain> chains = {
        {{"mask buffer", {0, 1, 0, 0}}, {"move buffer", {1, 0}}, {"archive buffer", {0, 2, 0}}},
        {{"set gabor reject", {0, 1, 0, 0, 1, 1, 0, 0}},
         {"watch gabor reject", {0, 1}},
         {"clone gabor reject", {0, 0}}},
        {{"load buffer", {0, 557}},
         {"inverse to parts", {0, 1, 0, 0}},
         {"window of doubles", {1, 1, 1, 0, 1, 1}}},
        {{"load buffer", {0, 2}},
         {"real image", {0, 0, 0}},
         {"filter doubles into doubles", {0, 0, 5, 0, 0, 0, 0, 0, 0}}},
    };
    for (const Chain& chain : chains) EXPECT_EQ(differenceOf(chain), "") << textOf(chain);
}

}  // namespace
