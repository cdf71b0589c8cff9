// Random chains of operations, done by the library and by the model.
#include <gtest/gtest.h>

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

}  // namespace
