// What AddressSanitizer is asked for.

extern "C" const char* __asan_default_options();

// Traces of all allocations would take a fifth of the time, and freed blocks that are kept for
// longer than an input takes fill the processor's caches. Where the allocation meter replaces the
// plain operators new and delete, the fuzzer still uses others.
extern "C" const char* __asan_default_options() {
    return "malloc_context_size=1:quarantine_size_mb=2:thread_local_quarantine_size_kb=64"
#if defined(MVFREQ_REPLACES_NEW)
           ":alloc_dealloc_mismatch=0"
#endif
        ;
}
