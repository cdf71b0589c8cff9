// Which paths other x86-64 processors than this one are offered.
#include <filt/fft/internal/kernel/path.h>

#include <gtest/gtest.h>

#include <string_view>

// What the compiler's own library has found out about the processor. Its name is the compiler's.
extern "C" struct {
    unsigned vendor, type, subtype, features;
} __cpu_model;  // NOLINT(bugprone-reserved-identifier)

namespace {

enum Feature : unsigned {
    kAvx2 = 10,
    kAvx512f = 15,
    kAvx512vl = 20,
    kAvx512bw = 21,
    kAvx512dq = 22
};

constexpr unsigned kAll = ~0U;

constexpr unsigned without(Feature feature) {
    return kAll & ~(1U << feature);
}

/// Lets the library see a processor with these features.
class Processor {
  public:
    explicit Processor(unsigned features) : real_(__cpu_model.features) {
        __cpu_model.features = features;
    }
    ~Processor() { __cpu_model.features = real_; }
    Processor(const Processor&) = delete;
    Processor& operator=(const Processor&) = delete;

  private:
    unsigned real_;
};

bool isOffered(std::string_view name, unsigned features) {
    const Processor processor(features);
    for (const mvi::KernelPath* path : mvi::KernelPathList()) {
        if (path->name == name) return path->isSupported();
    }
    ADD_FAILURE() << "no path " << name;
    return false;
}

TEST(KernelPath, IsOfferedToProcessorsThatHaveAllThatItIsCompiledFor) {
    EXPECT_TRUE(isOffered("avx512", kAll));
    for (const Feature needed : {kAvx512f, kAvx512vl, kAvx512bw, kAvx512dq}) {
        EXPECT_FALSE(isOffered("avx512", without(needed))) << needed;
    }
    EXPECT_TRUE(isOffered("avx2", kAll));
    EXPECT_FALSE(isOffered("avx2", without(kAvx2)));
    EXPECT_TRUE(isOffered("baseline", 0));
    EXPECT_TRUE(isOffered("plain", 0));
}

// The choice is made once in a process: this has to be its first.
TEST(KernelPath, IsTheFirstThatTheProcessorHas) {
    const Processor old(0);
    EXPECT_STREQ("baseline", mvi::bestKernelPath().name);
}

}  // namespace
