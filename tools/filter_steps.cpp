// What each filter command says of its filter.
#include "filter_steps.h"

#include <CLI/CLI.hpp>

#include <optional>

#include "filter_archive.h"
#include "numbers.h"
#include "step_recipe.h"

namespace {

// Pass filters clear the square around DC, reject filters keep it.
template <mvFilterKind kind>
constexpr const char* kRadiusHelp =
    "Clear DC (the mean) and n - 1 bins around it; 0 (default): nothing";
template <>
constexpr const char* kRadiusHelp<mvFilterKind::bandReject> =
    "Keep DC (the mean) and n - 1 bins around it; 0 (default): nothing";
template <>
constexpr const char* kRadiusHelp<mvFilterKind::gaborReject> =
    kRadiusHelp<mvFilterKind::bandReject>;

void addRadius(CLI::App& command, const char* help, mvFilterStep& step) {
    addWhole(command, "--dc-radius", help, [&step](long radius) { step.dcRadius = radius; });
}

template <mvFilterKind kind>
struct RingStep : FilterStep {
    mvFilterStep step{.kind = kind};

    void addOptions(CLI::App& command) override {
        addNumber(command, "--frequency", step.frequency, "Radius of the ring, 0 to 0.5")
            ->required();
        addNumber(command, "--sigma", step.sigma, "Width of its Gaussian flanks")->required();
        addNumber(command, "--plateau", step.plateau, "Half-width of its flat top");
        addRadius(command, kRadiusHelp<kind>, step);
    }

    ChainRecipe recipe(long) const override { return recipeOf(step, "--dc-radius"); }
};

template <mvFilterKind kind>
struct LobeStep : FilterStep {
    mvFilterStep step{.kind = kind};
    std::optional<double> sigmaAcross, plateauAcross;

    void addOptions(CLI::App& command) override {
        addNumber(command, "--frequency", step.frequency, "Distance of the lobe from DC, 0 to 0.5")
            ->required();
        addNumber(command, "--angle", step.degrees,
                  "Its direction in degrees: 0 for vertical stripes, 90 for horizontal");
        addNumber(command, "--sigma", step.sigma, "Its Gaussian width along that direction")
            ->required();
        addNumber(command, "--sigma-across", sigmaAcross, "Across it; else the same");
        addNumber(command, "--plateau", step.plateau,
                  "Half-size of its flat top along the direction");
        addNumber(command, "--plateau-across", plateauAcross, "Across it; else the same");
        if constexpr (kind == mvFilterKind::gaborReject) {
            command.add_flag("--both-sides", step.bothSides,
                             "Also remove the lobe on the other side of DC, at the angle + 180: a "
                             "wave of a picture is on both");
        }
        addRadius(command, kRadiusHelp<kind>, step);
    }

    ChainRecipe recipe(long) const override {
        mvFilterStep whole = step;
        whole.sigmaAcross = sigmaAcross.value_or(step.sigma);
        whole.plateauAcross = plateauAcross.value_or(step.plateau);
        return recipeOf(whole, "--dc-radius");
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
        return {recipeOf(Kernel(kernel, maxPixels))};
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
        const auto loaded = std::make_shared<const mvFilterChain>(loadFilters(archive));
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
         &stepOf<RingStep<mvFilterKind::bandPass>>, true},
        {"bandreject", "Remove the frequencies on a ring, of all directions",
         "mvfreq bandreject --frequency 0.24 --sigma 0.02 --plateau 0.05 \\\n"
         "    examples/pictures/printed.png descreened.png",
         &stepOf<RingStep<mvFilterKind::bandReject>>, true},
        {"gabor", "Keep the frequencies around one point of the spectrum",
         "mvfreq gabor --frequency 0.143 --angle 0 --sigma 0.01 --rescale \\\n"
         "    --angle-image phase.png examples/pictures/woven.png strength.png",
         &stepOf<LobeStep<mvFilterKind::gabor>>, true},
        {"gaborreject", "Remove the frequencies around one point of the spectrum",
         "mvfreq gaborreject --frequency 0.2 --angle 45 --sigma 0.02 --both-sides \\\n"
         "    examples/pictures/printed.png descreened.png",
         &stepOf<LobeStep<mvFilterKind::gaborReject>>, true},
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
