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
    throw std::runtime_error("the system does not show its use of memory");
}

using Image = mvPelBuffer<unsigned char>;

mvFrequencyFilterBandPass ringOf(long side) {
    return {0.02, 0.05, 0.12, mvPair<long>(side, side), 1};
}

void filterInThreeCalls(const Image& image, long plane, int) {
    mvFrequencyBuffer spectrum;
    mfForwardFFT<unsigned char>(image, spectrum);
    ringOf(plane).apply(spectrum);
    Image result;
    mfInverseFFT<unsigned char>(spectrum, result, false, true);
}

void filterInOneCall(const Image& image, long plane, int threads) {
    mvFilterImageOptions options;
    options.threads = threads;
    Image result;
    mfFilterImage<unsigned char>(image, ringOf(plane), result, options);
}

// Bytes at the peak beyond image and result. A small call beforehand takes what a process takes
// once.
double peakOf(long side, long plane, int threads, decltype(&filterInOneCall) filter) {
    return inNewProcess(1, [&] {
        filter(Image(64, 64), 64, 1);
        std::ofstream("/proc/self/clear_refs") << 5;
        const double before = kilobytesOf("VmRSS");
        Image image(side, side);
        mfPelSet_U8(image, 100);
        filter(image, plane, threads);
        const double images = 2.0 * static_cast<double>(side * side);
        return std::vector<double>{(kilobytesOf("VmHWM") - before) * 1024 - images};
    })[0];
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
    const struct {
        const char* way;
        long side, plane;
        int threads;
        decltype(&filterInOneCall) filter;
    } cases[] = {{"three calls", 2048, 2048, 1, filterInThreeCalls},
                 {"one call", 2048, 2048, 1, filterInOneCall},
                 {"one call", 2048, 1024, 1, filterInOneCall},
                 {"one call", 2048, 1024, 4, filterInOneCall},
                 {"one call", 8000, 1024, 1, filterInOneCall},
                 {"one call", 8000, 1024, 4, filterInOneCall}};
    for (const auto& c : cases) {
        const double bytes = peakOf(c.side, c.plane, c.threads, c.filter);
        const std::string work = std::string(c.way) + " by planes of " + std::to_string(c.plane) +
                                 " on " + std::to_string(c.threads);
        std::printf("memory beyond the images, %ldx%ld, %s: %.2f MiB\n", c.side, c.side,
                    work.c_str(), bytes / 1048576);
        record(settings, "memory", work, {c.side, c.side}, "mvfreq", {bytes});
    }
}

}  // namespace bench
