// How much the libraries do: the compiler calls the counter wherever a straight run of code begins.
#include "support/work_meter.h"

namespace {

std::uint64_t runs = 0;

}  // namespace

// The linker sends the calls here: libFuzzer has a function of that name, too.
extern "C" void __wrap___sanitizer_cov_trace_pc();
extern "C" void __wrap___sanitizer_cov_trace_pc() {
    ++runs;
}

namespace support {

WorkMeter::WorkMeter() : before_(runs) {}

std::uint64_t WorkMeter::work() const {
    return runs - before_;
}

bool WorkMeter::counts() {
#if defined(MVFREQ_COUNTED_WORK)
    return true;
#else
    return false;
#endif
}

}  // namespace support
