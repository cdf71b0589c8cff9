// What each filter command says of its filter.
#include "filter_steps.h"

#include <algorithm>
#include <numbers>
#include <optional>
#include <type_traits>

#include "failure.h"
#include "filter_archive.h"
#include "kernel_filter.h"
#include "numbers.h"
#include "size_text.h"

namespace {

// The square around DC: pass filters clear it, reject filters keep it.
struct Radius {
    long value = 0;

    void addTo(CLI::App& command, const char* help) {
        addWhole(command, "--dc-radius", help, [this](long radius) { value = radius; });
    }

    // The square reaches value - 1 bins to either side.
    long within(mvPair<long> size) const {
        const long largest = std::max(std::min(size.x, size.y) / 2, 1l);
        if (value <= largest) return value;
        throw BadArgument("--dc-radius: at most " + std::to_string(largest) + " fits a plane of " +
                          sizeText(size));
    }
};

template <class Filter>
constexpr const char* kRadiusHelp =
    "Keep DC (the mean) and n - 1 bins around it; 0 (default): nothing";
template <>
constexpr const char* kRadiusHelp<mvFrequencyFilterBandPass> =
    "Clear DC (the mean) and n - 1 bins around it; 0 (default): nothing";
template <>
constexpr const char* kRadiusHelp<mvFrequencyFilterGabor> = kRadiusHelp<mvFrequencyFilterBandPass>;

// Pass filters are those that only show something; an image is a convolution.
Channels channelsOf(const mvFrequencyFilter& filter) {
    const bool passes = dynamic_cast<const mvFrequencyFilterBandPass*>(&filter) ||
                        dynamic_cast<const mvFrequencyFilterGabor*>(&filter);
    return passes ? Channels::grey : Channels::each;
}

// Parameters that no plane takes are refused here, before the first picture is read.
template <class Step>
FilterRecipe recipeOf(const Step& step) {
    const mvPair<long> anyPlane(64, 64);
    const auto make = [step](mvPair<long> plane) {
        return step.build(plane, step.radius.within(plane));
    };
    const auto any = step.build(anyPlane, std::min(step.radius.value, 0l));
    return {.make = make, .reach = mfFilterReach(*any), .channels = channelsOf(*any)};
}

template <class Filter>
struct RingStep : FilterStep {
    double frequency = 0, sigma = 0, plateau = 0;
    Radius radius;

    void addOptions(CLI::App& command) override {
        addNumber(command, "--frequency", frequency, "Radius of the ring, 0 to 0.5")->required();
        addNumber(command, "--sigma", sigma, "Width of its Gaussian flanks")->required();
        addNumber(command, "--plateau", plateau, "Half-width of its flat top");
        radius.addTo(command, kRadiusHelp<Filter>);
    }

    std::unique_ptr<Filter> build(mvPair<long> plane, long dcRadius) const {
        return std::make_unique<Filter>(sigma, plateau, frequency, plane, dcRadius);
    }

    ChainRecipe recipe(long) const override { return {recipeOf(*this)}; }
};

template <class Filter>
struct LobeStep : FilterStep {
    double frequency = 0, degrees = 0, sigma = 0, plateau = 0;
    std::optional<double> sigmaAcross, plateauAcross;
    Radius radius;
    bool onBothSides = false;

    void addOptions(CLI::App& command) override {
        addNumber(command, "--frequency", frequency, "Distance of the lobe from DC, 0 to 0.5")
            ->required();
        addNumber(command, "--angle", degrees,
                  "Its direction in degrees: 0 for vertical stripes, 90 for horizontal");
        addNumber(command, "--sigma", sigma, "Its Gaussian width along that direction")->required();
        addNumber(command, "--sigma-across", sigmaAcross, "Across it; else the same");
        addNumber(command, "--plateau", plateau, "Half-size of its flat top along the direction");
        addNumber(command, "--plateau-across", plateauAcross, "Across it; else the same");
        if constexpr (std::is_same_v<Filter, mvFrequencyFilterGaborReject>) {
            command.add_flag("--both-sides", onBothSides,
                             "Also remove the lobe on the other side of DC, at the angle + 180: a "
                             "wave of a picture is on both");
        }
        radius.addTo(command, kRadiusHelp<Filter>);
    }

    std::unique_ptr<Filter> build(mvPair<long> plane, long dcRadius) const {
        return std::make_unique<Filter>(mvPair<double>(sigma, sigmaAcross.value_or(sigma)),
                                        mvPair<double>(plateau, plateauAcross.value_or(plateau)),
                                        mvRadian(degrees * std::numbers::pi / 180), frequency,
                                        plane, dcRadius);
    }

    ChainRecipe recipe(long) const override {
        if (!onBothSides) return {recipeOf(*this)};
        LobeStep opposite = *this;
        opposite.degrees += 180;
        return {recipeOf(*this), recipeOf(opposite)};
    }
};

struct ConvolveStep : FilterStep {
    std::string kernel;

    void addOptions(CLI::App& command) override {
        command
            .add_option("--kernel", kernel,
                        "Picture of the weights (divided by their sum), its centre in the middle")
            ->required();
    }

    std::vector<std::string> inputs() const override { return {kernel}; }

    ChainRecipe recipe(long maxPixels) const override {
        const Kernel read(kernel, maxPixels);
        const mvPair<long> least = read.leastPlane();
        const auto any = read.filter(least);
        return {{.make = [read](mvPair<long> plane) { return read.filter(plane); },
                 .reach = mfFilterReach(*any),
                 .leastPlane = least,
                 .channels = channelsOf(*any)}};
    }
};

struct ApplyStep : FilterStep {
    std::string archive;

    void addOptions(CLI::App& command) override {
        command.add_option("archive", archive, "Filters that --save wrote, one or several")
            ->required();
    }

    std::vector<std::string> inputs() const override { return {archive}; }

    ChainRecipe recipe(long) const override {
        const auto loaded = std::make_shared<const FilterChain>(loadFilters(archive));
        ChainRecipe recipe;
        for (const mvFrequencyFilter* filter : loaded->list()) {
            const auto make = [loaded, filter](mvPair<long>) {
                return std::unique_ptr<mvFrequencyFilter>(filter->clone());
            };
            recipe.push_back({.make = make,
                              .reach = mfFilterReach(*filter),
                              .plane = mfFilterPlane(*filter),
                              .channels = channelsOf(*filter)});
        }
        return recipe;
    }
};

template <class Step>
std::shared_ptr<FilterStep> stepOf() {
    return std::make_shared<Step>();
}

}  // namespace

const std::vector<StepKind>& stepKinds() {
    static const std::vector<StepKind> kinds = {
        {"bandpass", "Keep the frequencies on a ring, of all directions",
         "mvfreq bandpass --frequency 0.03 --sigma 0.012 --dc-radius 1 --rescale \\\n"
         "    examples/pictures/woven.png defects.png\n"
         "  mvfreq bandpass --frequency 0.03 --sigma 0.012 --dc-radius 1 --rescale \\\n"
         "    examples/pictures/*.png --out-dir results/",
         &stepOf<RingStep<mvFrequencyFilterBandPass>>, true},
        {"bandreject", "Remove the frequencies on a ring, of all directions",
         "mvfreq bandreject --frequency 0.24 --sigma 0.02 --plateau 0.05 \\\n"
         "    examples/pictures/printed.png descreened.png",
         &stepOf<RingStep<mvFrequencyFilterBandReject>>, true},
        {"gabor", "Keep the frequencies around one point of the spectrum",
         "mvfreq gabor --frequency 0.143 --angle 0 --sigma 0.01 --rescale \\\n"
         "    --angle-image phase.png examples/pictures/woven.png strength.png",
         &stepOf<LobeStep<mvFrequencyFilterGabor>>, true},
        {"gaborreject", "Remove the frequencies around one point of the spectrum",
         "mvfreq gaborreject --frequency 0.2 --angle 45 --sigma 0.02 --both-sides \\\n"
         "    examples/pictures/printed.png descreened.png",
         &stepOf<LobeStep<mvFrequencyFilterGaborReject>>, true},
        {"convolve", "Convolve with a kernel given as a picture",
         "mvfreq convolve --kernel examples/pictures/disc.png \\\n"
         "    examples/pictures/printed.png smooth.png",
         &stepOf<ConvolveStep>, true},
        {"apply", "Apply the filters of an archive, in their order",
         "mvfreq bandpass --frequency 0.03 --sigma 0.012 --save filter.mva \\\n"
         "    examples/pictures/woven.png filtered.png\n"
         "  mvfreq apply filter.mva examples/pictures/woven16.png again.png",
         &stepOf<ApplyStep>, false},
    };
    return kinds;
}
