// The attention signal: how an application asks a running operation of its own thread to stop.
#pragma once

#include <vsys/export.h>

/// Answers whether the operation that asks may go on: 0 for yes, anything else is the status it
/// fails with. It runs on the asking thread, inside the operation; it may throw, and then the
/// exception leaves the operation in place of the status.
using vsys_attention_handler = int (*)(void* context);

/// A handler with the context it is called with. No handler: both null.
struct vsys_attention_state {
    vsys_attention_handler handler;  ///< what is called
    void* context;                   ///< what it is called with
};

/// Asks the calling thread's handler and returns its answer; 0 when the thread has no handler.
VSYS_API int vsys_attention_check();

/// Installs `handler` for the calling thread (null: none) and returns the one before it, so that it
/// can be put back. Other threads keep their handlers. A handler may replace itself while it runs.
VSYS_API vsys_attention_state vsys_set_attention_handler(vsys_attention_handler handler,
                                                         void* context) noexcept;
