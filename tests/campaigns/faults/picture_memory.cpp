// How much memory the picture call takes at its peak beyond the two images.
#include <filt/freqfilt.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

using Image = mvPelBuffer<unsigned char>;

/// A line of /proc/self/status, in KiB.
long statusOf(const std::string& name) {
    std::ifstream file("/proc/self/status");
    std::string word;
    while (file >> word) {
        if (word == name + ":") {
            long value = 0;
            file >> value;
            return value;
        }
    }
    return -1;
}

/// Lets the peak of resident memory begin anew.
void forgetPeak() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

Image somePicture(long side) {
    Image image(side, side);
    for (long y = 0; y < side; ++y) {
        for (long x = 0; x < side; ++x) {
            image.pointToRow(y)[x] = static_cast<unsigned char>((x * x + 3 * y * x + 7 * y) >> 3);
        }
    }
    return image;
}

struct Case {
    const char* plane;
    mvPair<long> size;
    long side;
    mvFilterImageOptions options;
};

/// Prints what one call adds to the memory that is there.
void measure(const Case& c) {
    const Image image = somePicture(c.side);
    Image out(c.side, c.side);
    mfPelSet(out, static_cast<unsigned char>(1));  // so that its pages are there
    const mvFrequencyFilterBandPass ring(
        {.sigma = 0.02, .plateau = 0.01, .frequency = 0.06, .size = c.size, .dcRadius = 1});
    forgetPeak();
    const long before = statusOf("VmRSS");
    mfFilterImage(image, ring, out, c.options);
    const double added = static_cast<double>(statusOf("VmHWM") - before) / 1024;
    std::printf("%5ld x %-5ld %-12s %-7s %d threads %s %8.1f MiB\n", c.side, c.side, c.plane,
                c.options.border == mvBorder::zero ? "zero" : "mirror", c.options.threads,
                c.options.rescale ? "rescaled" : "        ", added);
    std::fflush(stdout);
}

/// In a process of its own: what one call leaves to the allocator would serve the next.
void measureAlone(const Case& c) {
    const pid_t child = fork();
    if (child == 0) {
        measure(c);
        _Exit(0);
    }
    waitpid(child, nullptr, 0);
}

}  // namespace

int main() {
    for (const bool rescale : {false, true}) {
        measureAlone(
            {"2048 x 2048", {2048, 2048}, 2048, {.border = mvBorder::zero, .rescale = rescale}});
        for (const long side : {2048L, 8000L}) {
            for (const int threads : {1, 4}) {
                const mvFilterImageOptions options{.rescale = rescale, .threads = threads};
                measureAlone({"1024 x 1024", {1024, 1024}, side, options});
            }
        }
    }
}
