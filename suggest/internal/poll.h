// The attention signal in loops outside the library.
#pragma once

#include <base/exception.h>
#include <vsys/attention.h>

namespace mvi {

/// Asks the thread's attention handler; throws what the transforms throw when it says stop.
inline void poll() {
    mfThrowExceptionOnFailure(vsys_attention_check());
}

/// The same before every 16th row.
inline void pollRow(long y) {
    if (y % 16 == 0) poll();
}

}  // namespace mvi
