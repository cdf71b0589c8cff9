// The commands that filter a picture.
#include "filter_commands.h"

#include <algorithm>
#include <memory>
#include <numbers>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "failure.h"
#include "filter_archive.h"
#include "filter_options.h"
#include "kernel_filter.h"
#include "numbers.h"
#include "picture_run.h"
#include "size_text.h"

namespace {

// A filter command: what all of them read and write, and how this one makes its filters.
struct FilterCommand {
    PictureArguments pictures;
    FilterOptions options;
    virtual ~FilterCommand() = default;
    virtual void addOptions(CLI::App& command) = 0;
    virtual FilterRecipe recipe() const = 0;

    // What is read besides the pictures.
    virtual std::vector<std::string> inputs() const { return {}; }
};

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
template <class Command>
FilterRecipe recipeOf(const Command& command) {
    const mvPair<long> anyPlane(64, 64);
    const auto make = [command](mvPair<long> plane) {
        return command.build(plane, command.radius.within(plane));
    };
    const auto any = command.build(anyPlane, std::min(command.radius.value, 0l));
    return {.make = make, .reach = mfFilterReach(*any), .channels = channelsOf(*any)};
}

template <class Filter>
struct RingCommand : FilterCommand {
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

    FilterRecipe recipe() const override { return recipeOf(*this); }
};

template <class Filter>
struct LobeCommand : FilterCommand {
    double frequency = 0, degrees = 0, sigma = 0, plateau = 0;
    std::optional<double> sigmaAcross, plateauAcross;
    Radius radius;

    void addOptions(CLI::App& command) override {
        addNumber(command, "--frequency", frequency, "Distance of the lobe from DC, 0 to 0.5")
            ->required();
        addNumber(command, "--angle", degrees,
                  "Its direction in degrees: 0 for vertical stripes, 90 for horizontal");
        addNumber(command, "--sigma", sigma, "Its Gaussian width along that direction")->required();
        addNumber(command, "--sigma-across", sigmaAcross, "Across it; else the same");
        addNumber(command, "--plateau", plateau, "Half-size of its flat top along the direction");
        addNumber(command, "--plateau-across", plateauAcross, "Across it; else the same");
        radius.addTo(command, kRadiusHelp<Filter>);
    }

    std::unique_ptr<Filter> build(mvPair<long> plane, long dcRadius) const {
        return std::make_unique<Filter>(mvPair<double>(sigma, sigmaAcross.value_or(sigma)),
                                        mvPair<double>(plateau, plateauAcross.value_or(plateau)),
                                        mvRadian(degrees * std::numbers::pi / 180), frequency,
                                        plane, dcRadius);
    }

    FilterRecipe recipe() const override { return recipeOf(*this); }
};

struct ConvolveCommand : FilterCommand {
    std::string kernel;

    void addOptions(CLI::App& command) override {
        command
            .add_option("--kernel", kernel,
                        "PNG of the weights (divided by their sum), its centre in the middle")
            ->required();
    }

    std::vector<std::string> inputs() const override { return {kernel}; }

    FilterRecipe recipe() const override {
        const Kernel read(kernel);
        const mvPair<long> least = read.leastPlane();
        const auto any = read.filter(least);
        return {.make = [read](mvPair<long> plane) { return read.filter(plane); },
                .reach = mfFilterReach(*any),
                .leastPlane = least,
                .channels = channelsOf(*any)};
    }
};

struct ApplyCommand : FilterCommand {
    std::string archive;

    void addOptions(CLI::App& command) override {
        command.add_option("archive", archive, "Filter that --save wrote")->required();
    }

    std::vector<std::string> inputs() const override { return {archive}; }

    FilterRecipe recipe() const override {
        const std::shared_ptr<const mvFrequencyFilter> loaded = loadFilter(archive);
        const auto make = [loaded](mvPair<long>) {
            return std::unique_ptr<mvFrequencyFilter>(loaded->clone());
        };
        return {.make = make,
                .reach = mfFilterReach(*loaded),
                .plane = mfFilterPlane(*loaded),
                .channels = channelsOf(*loaded)};
    }
};

// A filter from an archive has its plane, and is saved.
template <class Command>
constexpr bool kBuildsFilter = !std::is_same_v<Command, ApplyCommand>;

template <class Command>
void addCommand(CLI::App& app, Work& work, const char* name, const char* purpose,
                const char* example) {
    const auto command = std::make_shared<Command>();
    CLI::App& options = *app.add_subcommand(name, purpose);
    command->addOptions(options);
    CLI::Option* outDir =
        addPictures(options, command->pictures,
                    "PNG of the same depth, the magnitudes; in colour where --channels says so");
    addFilterOptions(options, command->options, outDir, kBuildsFilter<Command>);
    options.footer(std::string("Example:\n  ") + example);
    options.callback([command, &work] {
        work = [command] {
            requireFiles(command->pictures, {command->inputs(), otherOutputs(command->options)});
            SharedFilters filters(command->recipe());
            const auto filter = [&](const PictureFiles& files, int threads) {
                return filterPicture(files, command->options, filters, threads);
            };
            return runPictures(command->pictures, filter);
        };
    });
}

}  // namespace

void addFilterCommands(CLI::App& app, Work& work) {
    addCommand<RingCommand<mvFrequencyFilterBandPass>>(
        app, work, "bandpass", "Keep the frequencies on a ring, of all directions",
        "mvfreq bandpass --frequency 0.03 --sigma 0.012 --dc-radius 1 --rescale \\\n"
        "    examples/pictures/woven.png defects.png\n"
        "  mvfreq bandpass --frequency 0.03 --sigma 0.012 --dc-radius 1 --rescale \\\n"
        "    examples/pictures/*.png --out-dir results/");
    addCommand<RingCommand<mvFrequencyFilterBandReject>>(
        app, work, "bandreject", "Remove the frequencies on a ring, of all directions",
        "mvfreq bandreject --frequency 0.24 --sigma 0.02 --plateau 0.05 \\\n"
        "    examples/pictures/printed.png descreened.png");
    addCommand<LobeCommand<mvFrequencyFilterGabor>>(
        app, work, "gabor", "Keep the frequencies around one point of the spectrum",
        "mvfreq gabor --frequency 0.143 --angle 0 --sigma 0.01 --rescale \\\n"
        "    --angle-image phase.png examples/pictures/woven.png strength.png");
    addCommand<LobeCommand<mvFrequencyFilterGaborReject>>(
        app, work, "gaborreject", "Remove the frequencies around one point of the spectrum",
        "mvfreq gaborreject --frequency 0.2 --angle 45 --sigma 0.02 \\\n"
        "    examples/pictures/printed.png halved.png");
    addCommand<ConvolveCommand>(app, work, "convolve", "Convolve with a kernel given as a picture",
                                "mvfreq convolve --kernel examples/pictures/disc.png \\\n"
                                "    examples/pictures/printed.png smooth.png");
    addCommand<ApplyCommand>(app, work, "apply", "Apply a filter from an archive",
                             "mvfreq bandpass --frequency 0.03 --sigma 0.012 --save filter.mva \\\n"
                             "    examples/pictures/woven.png filtered.png\n"
                             "  mvfreq apply filter.mva examples/pictures/woven16.png again.png");
}
