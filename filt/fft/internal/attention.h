// The attention poll of long loops.
#pragma once

#include <filt/platform.h>

namespace mvi {

/// Asks the calling thread's attention handler; throws when it does not say "go on".
inline void pollAttention() {
    mfThrowExceptionOnFailure(vsys_attention_check());
}

}  // namespace mvi
