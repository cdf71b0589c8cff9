// The attention poll of long loops.
#pragma once

#include <filt/platform.h>

/// Asks the calling thread's attention handler; throws when it does not say "go on".
inline void mf_PollAttention() {
    mfThrowExceptionOnFailure(vsys_attention_check());
}
