// The attention signal: one handler for each thread.
#include <vsys/attention.h>

#include <utility>

namespace {
thread_local vsys_attention_state current{nullptr, nullptr};
}  // namespace

int vsys_attention_check() {
    const vsys_attention_state asked = current;
    return asked.handler ? asked.handler(asked.context) : 0;
}

vsys_attention_state vsys_set_attention_handler(vsys_attention_handler handler,
                                                void* context) noexcept {
    return std::exchange(current, {handler, context});
}
