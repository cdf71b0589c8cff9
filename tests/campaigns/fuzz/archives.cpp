// Archives from outside: loaded as every type and through the registry, then used.
//
// An input is the name of a kind of content (archive/content.h), a line feed and the archive.
#include <cstdlib>

#include "input.h"
#include "support/allocation_meter.h"
#include "support/content.h"
#include "support/loading.h"
#include "support/metered_steps.h"

namespace {

// More of them say no more.
constexpr int kMostObjects = 8;

// A failed expectation in what use() does ends the process, so that it is a finding.
const bool kEndsOnFailure = [] {
    testing::GTEST_FLAG(break_on_failure) = true;
    return true;
}();

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

void loadOne(archive::Content& content, archive::Loading& loading, std::size_t size) {
    const BoundedMeter meter(archive::largestLoad(size));
    content.load(loading);
}

/// False when the archive ended the load with an error.
bool loadAll(archive::Content& content, const std::string& bytes) {
    archive::Loading loading(bytes);
    const std::string thrown = archive::loadingThrows([&] {
        int objects = 0;
        do {
            loadOne(content, loading, bytes.size());
        } while (content.takesMore() && loading.rest() > 0 && ++objects < kMostObjects);
    });
    return thrown == "nothing";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view all = fuzz::asText(data, size);
    const fuzz::Input input = fuzz::split(all, '\n');
    const archive::ContentKind* kind = archive::contentKind(input.heading);
    if (!kind) return 0;
    const auto content = kind->make();
    const bool isLoaded = loadAll(*content, std::string(input.body));
    // What an error leaves behind is mostly the same: some of it will do.
    if (!isLoaded && !fuzz::isOneIn(8, all)) return 0;
    archive::MeteredSteps steps(size);
    content->use(steps, fuzz::isOneIn(64, all) ? 1 << 14 : 1 << 8);
    return 0;
}
