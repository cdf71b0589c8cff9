// Benchmarks: this library beside its peers, on the same work in the same run.
#include <algorithm>
#include <cstdio>
#include <exception>

#include "contest.h"
#include "fftw.h"
#include "groups.h"
#include "machine.h"
#include "transforms.h"

namespace bench {

namespace {

bool isAmong(const std::vector<std::string>& names, const std::string& name) {
    return names.empty() || std::ranges::count(names, name) != 0;
}

}  // namespace

bool isWanted(const Settings& settings, const std::string& group) {
    return isAmong(settings.groups, group);
}

bool isWantedWork(const Settings& settings, const std::string& work) {
    return isAmong(settings.works, work);
}

std::vector<Size> wantedOf(const Settings& settings, std::vector<Size> sizes) {
    std::erase_if(sizes, [&](Size size) {
        return !isAmong(settings.sizes,
                        std::to_string(size.width) + "x" + std::to_string(size.height));
    });
    return sizes;
}

namespace {

// Name and value pairs, one a line.
void describeMachine(const Settings& settings) {
    if (!isWanted(settings, "machine")) return;
    const RealTime realTime(settings.realTime);
    std::printf("processor=%s\ncompiler=%s\nclock_ghz=%.3f\nadds_per_ns=%.2f\npath=%s\n",
                processorName().c_str(), __VERSION__, clockRate(), additionRate(),
                mvi::bestKernelPath().name);
    for (const auto& build : fftwBuilds(settings)) {
        std::printf("%s=%s\n", build->name().c_str(), build->version().c_str());
    }
}

void runAll(const Settings& settings) {
    if (settings.core >= 0) pinTo(settings.core);
    describeMachine(settings);
    measureMemory(settings);
    compareFirstCalls(settings);
    holdTransforms(settings);
    holdPipelines(settings);
    holdTiles(settings);
    holdOperations(settings);
}

}  // namespace
}  // namespace bench

int main(int count, char** words) {
    try {
        bench::runAll(bench::settingsOf(count, words));
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "mvfreq_bench: %s\n", failure.what());
        return 1;
    }
}
