// The options that all filter commands have.
#include "filter_options.h"

#include <CLI/CLI.hpp>

#include "numbers.h"
#include "plane_options.h"

namespace {

void addRescale(CLI::App& command, FilterOptions& options) {
    addNumber(
        command, "--rescale",
        "Spread the magnitudes over the whole grey range (else they stay grey levels). With a "
        "percentage, such as 99.9, so many of the pels: brighter ones become white. A 16-bit "
        "result "
        "that is bright all over does not reach down to 0: on a plane of 1024 x 1024, 9537 and "
        "darker becomes 0",
        [&options](double percent) {
            if (percent <= 0) throw CLI::ValidationError("--rescale", "0 % of the pels are none");
            options.rescale = percent;
        },
        0, 100)
        ->type_name("[PERCENT]");
}

void addChannels(CLI::App& command, FilterOptions& options) {
    const auto set = [&options](const std::string& name) {
        options.channels = name == "each" ? Channels::each : Channels::grey;
    };
    command
        .add_option_function<std::string>(
            "--channels", set,
            "What becomes of colour: it is made grey before it is filtered (grey), or red, green "
            "and blue are filtered one by one (each). If not given, filters that remove something "
            "and kernels take each, those that keep something take grey")
        ->check(CLI::IsMember({"grey", "each"}));
}

}  // namespace

void addFilterOptions(CLI::App& command, FilterOptions& options, CLI::Option* outDir,
                      bool buildsFilter) {
    addRescale(command, options);
    command.add_flag("--signed", options.withSign,
                     "Write the real part with its sign instead, as 16 bits: 32768 is zero, and a "
                     "grey level of the picture is a level, unless they are spread");
    addChannels(command, options);
    addPlaneOptions(command, options.plane, buildsFilter);
    addOutput(command, "--angle-image", options.angleImage,
              "Also write the angles of the complex result, of grey: 0 to 255 for a full turn")
        ->excludes(outDir);
    addOutput(command, "--quadrant-image", options.quadrantImage,
              "Also write its quadrants: 0, 85, 170, 255 for the signs ++, -+, +-, --")
        ->excludes(outDir);
    addFindOptions(command, options.find, outDir);
    if (!buildsFilter) return;
    addOutput(command, "--save", options.save,
              "Also write the filter to an archive, for mvfreq apply")
        ->excludes(outDir);
}

std::vector<Output> otherOutputs(const FilterOptions& options) {
    std::vector<Output> outputs;
    if (options.angleImage) outputs.push_back({*options.angleImage, Role::picture});
    if (options.quadrantImage) outputs.push_back({*options.quadrantImage, Role::picture});
    if (options.find.overlay) outputs.push_back({*options.find.overlay, Role::picture});
    if (options.save) outputs.push_back({*options.save, Role::archive});
    return outputs;
}
