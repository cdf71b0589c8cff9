// How long a call at the largest size works between two attention polls.
#include <filt/fft.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::duration<double, std::micro>;

// Notes the longest time without a poll while it lives.
class Watch {
  public:
    Watch()
        : begin_(Clock::now()), last_(begin_), former_(vsys_set_attention_handler(&poll, this)) {}
    ~Watch() { vsys_set_attention_handler(former_.handler, former_.context); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// To be called at the end of the call, which ends a stretch as well.
    void note() {
        const auto now = Clock::now();
        longest_ = std::max(longest_, now - last_);
        last_ = now;
    }
    double longest() const { return Microseconds(longest_).count(); }
    double whole() const { return Microseconds(last_ - begin_).count(); }

  private:
    static int poll(void* context) {
        static_cast<Watch*>(context)->note();
        return 0;
    }

    Clock::time_point begin_, last_;
    Clock::duration longest_{};
    vsys_attention_state former_;
};

struct Measurement {
    double longest, whole;
};

// The run with the shortest longest stretch: others had to share the processor.
Measurement measure(const std::function<void()>& call) {
    constexpr int kRuns = 9;
    std::vector<Measurement> runs;
    for (int i = 0; i < kRuns; ++i) {
        Watch watch;
        call();
        watch.note();
        runs.push_back({watch.longest(), watch.whole()});
    }
    return *std::ranges::min_element(runs, {}, &Measurement::longest);
}

void report(const char* name, const std::function<void()>& call) {
    call();
    const Measurement m = measure(call);
    std::printf("%-34s %10.0f us %10.0f us %6.1f %%\n", name, m.longest, m.whole,
                100 * m.longest / m.whole);
}

}  // namespace

int main(int argc, char** argv) {
    const long side = argc > 1 ? std::atol(argv[1]) : 2048;
    mvPelBuffer<unsigned char> image(side, side), out;
    for (long y = 0; y < side; ++y) {
        for (long x = 0; x < side; ++x) {
            image.pointToRow(y)[x] = static_cast<unsigned char>(x * 7 + y * 13 + x * y % 31);
        }
    }
    mvPelBuffer<double> real, imaginary;
    mvFrequencyBuffer spectrum, other;
    mfForwardFFT<unsigned char>(image, spectrum);

    std::printf("%ld x %ld\n%-34s %13s %13s %8s\n", side, side, "call", "longest", "whole",
                "share");
    report("forward of bytes", [&] { mfForwardFFT<unsigned char>(image, other); });
    report("forward of two images", [&] { mfForwardFFT<unsigned char>(image, image, other); });
    report("forward of a buffer", [&] { mfForwardFFT(spectrum, other); });
    report("inverse to a buffer", [&] { mfInverseFFT(spectrum, other); });
    report("inverse to bytes", [&] { mfInverseFFT<unsigned char>(spectrum, out, false); });
    report("inverse to bytes, rescaled", [&] { mfInverseFFT<unsigned char>(spectrum, out, true); });
    report("inverse to bytes, angle",
           [&] { mfInverseFFTAngle<unsigned char>(spectrum, out, real, false); });
    report("inverse to real and imaginary", [&] { mfInverseFFT(spectrum, real, imaginary); });
    return 0;
}
