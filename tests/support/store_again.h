// Storing what was loaded.
#pragma once

#include "support/loading.h"

namespace archive {

/// What was stored loads again, and is stored the same.
template <class T>
void storeAgain(T& object) {
    const std::string bytes = stored(object);
    T again;
    load(bytes, again);
    EXPECT_EQ(stored(again), bytes);
}

}  // namespace archive
