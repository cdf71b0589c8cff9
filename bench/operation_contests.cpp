// Single operations beside a copy that moves as many bytes.
#include <filt/freqfilt.h>

#include <cmath>
#include <functional>
#include <stdexcept>

#include "contest.h"
#include "groups.h"
#include "inputs.h"
#include "pipeline.h"
#include "transforms.h"

namespace bench {
namespace {

class Operation : public Peer {
  public:
    Operation(std::function<void()> prepare, std::function<void()> work)
        : Peer("mvfreq"), prepare_(std::move(prepare)), work_(std::move(work)) {}

    void load(const Values&) override { prepare_(); }
    void run() override { work_(); }

  private:
    std::function<void()> prepare_, work_;
};

/// Planes to work on, and what the operations leave.
struct Operands {
    explicit Operands(Size size) : a(spectrumOf(size, 0.25)), b(spectrumOf(size, 4.0)) {}

    static mvFrequencyBuffer spectrumOf(Size size, double stretch) {
        mvPelBuffer<double> image(size.width, size.height);
        const Values values = randomValues(size.count());
        for (long y = 0; y < size.height; ++y) {
            for (long x = 0; x < size.width; ++x) {
                image.pointToRow(y)[x] =
                    stretch *
                    static_cast<double>(values[static_cast<std::size_t>(y * size.width + x)]);
            }
        }
        mvFrequencyBuffer spectrum;
        mfForwardFFT(image, spectrum);
        return spectrum;
    }

    mvFrequencyBuffer a, b, result;
    mvPelBuffer<double> image;
    mvPelBuffer<unsigned char> bytes;
};

class Operations {
  public:
    Operations(Size size, const Settings& settings)
        : size_(size), settings_(settings), plane_(8 * size.count()), operands_(size) {}

    void hold() {
        holdArithmetic();
        holdComponents();
        holdFilters();
        holdMappings();
    }

  private:
    using Kind = mvFrequencyDefs::FrequencyMapping;

    // `moved` counts the bytes that are read and those that are written; with `makesImage` the
    // result is new memory each time.
    void contest(
        const std::string& name, long moved, const std::function<void()>& work,
        bool makesImage = false, const std::function<void()>& prepare = [] {}) {
        Contest contest{"operation", name, size_, {}, {}, relativeError(0), {}};
        contest.peers.push_back(std::make_unique<Operation>(prepare, work));
        contest.peers.push_back(copy(moved / 2));
        if (makesImage) contest.peers.push_back(copy(moved / 2, true));
        bench::hold(contest, settings_);
    }

    void holdArithmetic() {
        Operands& o = operands_;
        contest("add", 3 * plane_, [&] { mfFrequencyAdd(o.a, o.b, o.result); });
        contest("subtract", 3 * plane_, [&] { mfFrequencySubtract(o.a, o.b, o.result); });
        contest("multiply", 3 * plane_, [&] { mfFrequencyMultiply(o.a, o.b, o.result); });
        contest(
            "add in place", 3 * plane_, [&] { mfFrequencyAdd(o.b, o.result); }, false,
            [&] { o.result = o.a; });
        contest("conjugate", 2 * plane_, [&] { mfFrequencyConjugate(o.a, o.result); });
        contest("conjugate in place", 2 * plane_, [&] { mfFrequencyConjugate(o.a); });
        contest("copy", 2 * plane_, [&] { o.result = o.a; });
        o.result = o.a;
        contest("equality", 2 * plane_, [&] {
            if (!(o.result == o.a)) throw std::runtime_error("equal buffers differ");
        });
    }

    void component(const char* name, bool centred,
                   mvPelBuffer<double> (mvFrequencyBuffer::*get)(bool) const) {
        Operands& o = operands_;
        contest(
            std::string(name) + (centred ? " centred" : ""), 2 * plane_,
            [&, get, centred] { o.image = (o.a.*get)(centred); }, true, [&] { o.image = {}; });
    }

    void holdComponents() {
        for (const bool centred : {false, true}) {
            component("real image", centred, &mvFrequencyBuffer::getRealImage);
            component("imaginary image", centred, &mvFrequencyBuffer::getImaginaryImage);
            component("magnitude image", centred, &mvFrequencyBuffer::getMagnitudeImage);
        }
        component("phase image", false, &mvFrequencyBuffer::getPhaseImage);
    }

    // The lobe's plane is mostly cleared, and only written for that.
    void holdFilters() {
        for (const auto kind : {FilterKind::WideRing, FilterKind::Gabor, FilterKind::Image}) {
            const Pipeline work(kind, size_);
            const long moved = kind == FilterKind::Gabor      ? plane_
                               : kind == FilterKind::WideRing ? 2 * plane_
                                                              : 3 * plane_;
            Operands& o = operands_;
            contest(
                std::string("apply ") + nameOf(kind), moved, [&] { work.filter->apply(o.result); },
                false, [&] { o.result = o.a; });
        }
    }

    // Where the range is not given, the image is read twice.
    void mapping(const char* name, Kind kind, bool findsRange) {
        Operands& o = operands_;
        const long moved = plane_ * (findsRange ? 2 : 1) + size_.count();
        contest(
            name, moved, [&, kind] { o.bytes = mfFrequencyMapImage(o.image, kind, 0, 255); }, true,
            [&] { o.bytes = {}; });
    }

    void holdMappings() {
        operands_.image = operands_.a.getMagnitudeImage(true);
        mapping("map clip", mvFrequencyDefs::eMapClip, false);
        mapping("map range", mvFrequencyDefs::eMapRange, false);
        mapping("map autoscale", mvFrequencyDefs::eMapAutoScale, true);
        mapping("map log", mvFrequencyDefs::eMapLog, true);
    }

    Size size_;
    const Settings& settings_;
    long plane_;
    Operands operands_;
};

}  // namespace

void holdOperations(const Settings& settings) {
    if (!isWanted(settings, "operation")) return;
    for (const Size size : wantedOf(settings, {{512, 512}, {2048, 2048}})) {
        Operations(size, settings).hold();
    }
}

}  // namespace bench
