// The machine that the figures are taken on.
#include "machine.h"

#include <immintrin.h>
#include <sched.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <stdexcept>

namespace bench {
namespace {

constexpr int kSteps = 200000;
constexpr int kChains = 16;

// The best of a few attempts: what disturbs only adds time.
template <class Work>
double fastest(Work work) {
    double best = 1e300;
    for (int i = 0; i < 50; ++i) {
        const auto begin = Clock::now();
        work();
        best = std::min(best, nanosecondsSince(begin));
    }
    return best;
}

// The empty assembly makes the compiler believe that every sum is used.
[[gnu::target("avx512f")]] void addWith512Bits() {
    __m512 sums[kChains] = {};
    const __m512 one = _mm512_set1_ps(1.0f);
    for (int i = 0; i < kSteps; ++i) {
        for (__m512& sum : sums) sum = _mm512_add_ps(sum, one);
        for (std::size_t k = 0; k < kChains; k += 4) {
            asm volatile(""
                         : "+v"(sums[k]), "+v"(sums[k + 1]), "+v"(sums[k + 2]), "+v"(sums[k + 3]));
        }
    }
}

[[gnu::target("avx2")]] void addWith256Bits() {
    __m256 sums[kChains / 2] = {};
    const __m256 one = _mm256_set1_ps(1.0f);
    for (int i = 0; i < kSteps; ++i) {
        for (__m256& sum : sums) sum = _mm256_add_ps(sum, one);
        for (std::size_t k = 0; k < kChains / 2; k += 4) {
            asm volatile(""
                         : "+x"(sums[k]), "+x"(sums[k + 1]), "+x"(sums[k + 2]), "+x"(sums[k + 3]));
        }
    }
}

}  // namespace

void pinTo(int core) {
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(static_cast<std::size_t>(core), &set);
    if (sched_setaffinity(0, sizeof set, &set) != 0) throw std::runtime_error("cannot pin to core");
}

OnAllCores::OnAllCores() {
    cpu_set_t all;
    std::memset(&all, 0xff, sizeof all);
    if (sched_getaffinity(0, sizeof before_, &before_) != 0 ||
        sched_setaffinity(0, sizeof all, &all) != 0) {
        throw std::runtime_error("cannot use all cores");
    }
}

OnAllCores::~OnAllCores() {
    sched_setaffinity(0, sizeof before_, &before_);
}

RealTime::RealTime(bool wanted) : wanted_(wanted) {
    sched_param priority{};
    priority.sched_priority = 50;
    if (wanted_ && sched_setscheduler(0, SCHED_FIFO, &priority) != 0) {
        throw std::runtime_error("no right to real-time priority");
    }
}

RealTime::~RealTime() {
    const sched_param priority{};
    if (wanted_) sched_setscheduler(0, SCHED_OTHER, &priority);
}

long interruptions() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_nivcsw;
}

std::string processorName() {
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);) {
        if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
    }
    return "unknown";
}

double clockRate() {
    const double time = fastest([] {
        long sum = 0;
        const long one = 1;  // from a register: some processors add constants without a cycle
        for (int i = 0; i < kSteps; ++i) {
            asm volatile("add %1, %0\n add %1, %0\n add %1, %0\n add %1, %0"
                         : "+r"(sum)
                         : "r"(one));
        }
    });
    return 4.0 * kSteps / time;
}

double additionRate() {
    if (__builtin_cpu_supports("avx512f")) {
        return 16.0 * kChains * kSteps / fastest(addWith512Bits);
    }
    return 8.0 * kChains / 2 * kSteps / fastest(addWith256Bits);
}

}  // namespace bench
