// What only a fresh process shows: the first call, and the peak of memory.
#include <filt/freqfilt.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "contest.h"
#include "groups.h"
#include "inputs.h"
#include "machine.h"
#include "transforms.h"

namespace bench {
namespace {

constexpr int kProcesses = 41;
constexpr int kCalls = 6;

// Calls work() in a process of its own and returns the numbers that it gives.
template <class Work>
std::vector<double> inNewProcess(std::size_t count, Work work) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no process");
    const auto bytes = static_cast<ssize_t>(count * sizeof(double));
    if (child == 0) {
        const std::vector<double> numbers = work();
        const bool sent = write(ends[1], numbers.data(), static_cast<std::size_t>(bytes)) == bytes;
        _exit(sent ? 0 : 1);
    }
    close(ends[1]);
    std::vector<double> numbers(count);
    const bool received = read(ends[0], numbers.data(), static_cast<std::size_t>(bytes)) == bytes;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!received || status != 0) throw std::runtime_error("a child process failed");
    return numbers;
}

// A call of the plain path beforehand warms the memory, but neither the code nor its tables.
std::vector<double> timesOfFirstCalls(Size size, const Values& input) {
    const auto other = mvfreqComplex(size, **(mvi::KernelPathList().end() - 1));
    const auto peer = mvfreqComplex(size, mvi::bestKernelPath());
    other->load(input);
    other->run();
    std::vector<double> times;
    for (int i = 0; i < kCalls; ++i) {
        peer->load(input);
        const auto begin = Clock::now();
        peer->run();
        times.push_back(nanosecondsSince(begin));
    }
    return times;
}

double kilobytesOf(const char* field) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(field)) return std::stod(line.substr(line.find(':') + 1));
    }
    throw std::runtime_error("the system does not tell its use of memory");
}

void filterInPlace(long side, mvPelBuffer<unsigned char>& image) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT<unsigned char>(image, spectrum);
    mvFrequencyFilterBandPass(0.02, 0.05, 0.12, mvPair<long>(side, side), 1).apply(spectrum);
    mvPelBuffer<unsigned char> result;
    mfInverseFFT<unsigned char>(spectrum, result, false, true);
}

}  // namespace

void compareFirstCalls(const Settings& settings) {
    if (!isWanted(settings, "first")) return;
    for (const Size size : wantedOf(settings, {{64, 64}, {256, 256}, {1024, 1024}, {2048, 2048}})) {
        const Values input = randomValues(2 * size.count());
        const RealTime realTime(settings.realTime);
        std::vector<double> first, later;
        for (int i = 0; i < kProcesses; ++i) {
            const auto times = inNewProcess(kCalls, [&] { return timesOfFirstCalls(size, input); });
            first.push_back(times.front());
            later.insert(later.end(), times.begin() + 1, times.end());
        }
        record(settings, "first", "c2c", size, "first call", first);
        record(settings, "first", "c2c", size, "later calls", later);
    }
}

void measureMemory(const Settings& settings) {
    if (!isWanted(settings, "memory")) return;
    constexpr long kSide = 2048;
    const auto numbers = inNewProcess(1, [] {
        mvPelBuffer<unsigned char> small(64, 64);
        filterInPlace(64, small);
        std::ofstream("/proc/self/clear_refs") << 5;
        const double before = kilobytesOf("VmRSS");
        mvPelBuffer<unsigned char> image(kSide, kSide);
        mfPelSet_U8(image, 100);
        filterInPlace(kSide, image);
        return std::vector<double>{(kilobytesOf("VmHWM") - before) * 1024};
    });
    const double planeAndImages = kSide * kSide * (8 + 2);
    std::printf(
        "memory of the in-place 8-bit pipeline, 2048x2048: %.2f MiB beyond plane and images\n",
        (numbers[0] - planeAndImages) / 1048576);
    record(settings, "memory", "bytes beyond plane and images", {kSide, kSide}, "mvfreq",
           {numbers[0] - planeAndImages});
}

}  // namespace bench
