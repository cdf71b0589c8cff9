// Archives from outside: loaded as every type and through the registry, then used.
//
// An input is the name of a kind of content (archive/content.h), a line feed and the archive. Most
// of them go through some operations on small planes; which, their bytes decide.
#include <cstdio>
#include <cstdlib>
#include <new>
#include <stdexcept>

#include "bytes.h"
#include "input.h"
#include "support/allocation_meter.h"
#include "support/content.h"
#include "support/loading.h"
#include "support/metered_steps.h"

namespace {

// More of them say no more.
constexpr int kMostObjects = 8;

// A failed expectation in what use() does ends the process, so that it is a finding. To say so by
// GoogleTest's flag would depend on whether that is initialised before.
class EndOnFailure : public testing::EmptyTestEventListener {
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (!result.failed()) return;
        std::fprintf(stderr, "%s:%d: %s\n", result.file_name(), result.line_number(),
                     result.message());
        std::abort();
    }
};

void endOnFailure() {
    testing::UnitTest::GetInstance()->listeners().Append(new EndOnFailure);
}

/// Ends the process when the bound is broken, whether the load succeeds or not.
class BoundedMeter {
  public:
    explicit BoundedMeter(std::size_t most) : most_(most) {}
    ~BoundedMeter() {
        if (meter_.peak() > most_) std::abort();
    }
    BoundedMeter(const BoundedMeter&) = delete;
    BoundedMeter& operator=(const BoundedMeter&) = delete;

  private:
    const std::size_t most_;
    archive::AllocationMeter meter_;
};

// Each operation of some inputs, one in so many of the others. Where memory runs out, it is at
// another block each time, mostly at one that the operation asks for.
class ChosenSteps : public archive::MeteredSteps {
  public:
    ChosenSteps(std::string_view all, std::uint32_t oneIn)
        : MeteredSteps(all.size()),
          noise_(fuzz::hashOf(all)),
          oneIn_(oneIn),
          isShort_(fuzz::isOneIn(7, all)) {}

    bool takesNext() override { return oneIn_ == 1 || noise_.below(oneIn_) == 0; }

    bool isShortOfMemory() override { return isShort_; }
    bool failsWithoutMemory(const archive::Operation& operation) override {
        const archive::AllocationMeter meter(1 + static_cast<long>(noise_.below(kMostBlocks)));
        try {
            operation();
        } catch (const mvException&) {
        } catch (const std::length_error&) {
        } catch (const std::bad_alloc&) {
            return true;
        }
        return false;
    }

  private:
    static constexpr std::uint32_t kMostBlocks = 12;

    fuzz::Noise noise_;
    std::uint32_t oneIn_;
    bool isShort_;
};

// Elements of the largest plane that is used. The numbers here have no common divisor, so that no
// choice goes with another.
long largestArea(std::string_view all) {
    if (fuzz::isOneIn(fuzz::kIsReplayed ? 64 : 2039, all)) return 1 << 14;
    return fuzz::kIsReplayed || fuzz::isOneIn(31, all) ? 1 << 8 : 1 << 6;
}

// Bytes of the largest block that there is. Records of a few bytes fill planes of megabytes with
// zeros, which would take most of the time; what is refused has its cost asserted all the same.
std::size_t largestBlock(std::string_view all) {
    const bool hasAll = fuzz::kIsReplayed || fuzz::isOneIn(61, all) || largestArea(all) > 1 << 8;
    return hasAll ? archive::kLargestBlock : std::size_t{1} << 18;
}

void loadOne(archive::Content& content, archive::Loading& loading, std::size_t size) {
    const BoundedMeter meter(archive::largestLoad(size));
    content.load(loading);
}

/// False when the archive ended the load with an error, or there was no memory for it.
bool loadAll(archive::Content& content, const std::string& bytes) try {
    archive::Loading loading(bytes);
    const std::string thrown = archive::loadingThrows([&] {
        int objects = 0;
        do {
            loadOne(content, loading, bytes.size());
        } while (content.takesMore() && loading.rest() > 0 && ++objects < kMostObjects);
    });
    return thrown == "nothing";
} catch (const std::bad_alloc&) {
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool endsOnFailure = (endOnFailure(), true);
    static_cast<void>(endsOnFailure);
    const std::string_view all = fuzz::asText(data, size);
    const fuzz::Input input = fuzz::split(all, '\n');
    const archive::ContentKind* kind = archive::contentKind(input.heading);
    if (!kind) return 0;
    const archive::BlockLimit limit(largestBlock(all));
    const auto content = kind->make();
    const bool isLoaded = loadAll(*content, std::string(input.body));
    // What an error leaves behind is mostly the same: some of it will do.
    if (!isLoaded && !fuzz::isOneIn(8, all)) return 0;
    ChosenSteps steps(all, fuzz::kIsReplayed || fuzz::isOneIn(61, all) ? 1 : 8);
    content->use(steps, largestArea(all));
    return 0;
}
