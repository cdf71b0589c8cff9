// The pictures on a command line.
#include "picture_arguments.h"

#include <CLI/CLI.hpp>

#include <map>

#include "failure.h"
#include "numbers.h"
#include "picture_format.h"
#include "standard_names.h"
#include "system.h"

namespace {

constexpr char kNoInput[] = "input is required (mvfreq --help tells more)";

PictureFiles single(const std::vector<std::string>& names, long maxPixels) {
    if (names.empty()) throw BadArgument(kNoInput);
    if (names.size() == 1) {
        throw BadArgument("output is required, or --out-dir (mvfreq --help tells more)");
    }
    if (names.size() > 2) throw BadArgument(names[2] + ": more than one input needs --out-dir");
    return {names[0], names[1], maxPixels};
}

std::string inFolder(const std::string& folder, const std::string& input) {
    return nameOf(pathOf(folder) / pathOf(writableName(nameOf(pathOf(input).filename()))));
}

// Results that would meet are refused before the first of them is made.
void requireRoom(const std::vector<PictureFiles>& files) {
    std::map<std::string, std::string> inputs;
    for (const PictureFiles& file : files) {
        if (isStandard(file.input)) {
            throw BadArgument("-: a picture from standard input has no name for --out-dir");
        }
        const auto [former, isNew] = inputs.emplace(file.output, file.input);
        if (!isNew) {
            throw BadArgument(file.output + ": the results of " + former->second + " and " +
                              file.input + " have this name");
        }
    }
}

}  // namespace

std::vector<PictureFiles> PictureArguments::files() const {
    if (!outDir) return {single(names, maxPixels)};
    if (outDir->empty() || isStandard(*outDir)) {
        throw BadArgument("--out-dir: the name of a folder is missing");
    }
    if (names.empty()) throw BadArgument(kNoInput);
    std::vector<PictureFiles> files;
    for (const std::string& name : names) {
        files.push_back({name, inFolder(*outDir, name), maxPixels});
    }
    requireRoom(files);
    return files;
}

CLI::Option* addPictures(CLI::App& command, PictureArguments& pictures, const char* outputHelp) {
    command.add_option(
        "pictures", pictures.names,
        std::string(
            "Input and output; with --out-dir, inputs alone. Input: PNG, JPEG, TIFF, BMP or "
            "PNM, of 8 or 16 bits; alpha is ignored. Output, by its ending .png, .tif, "
            ".pgm or .ppm (else PNG): ") +
            outputHelp);
    CLI::Option* outDir = command.add_option("--out-dir", pictures.outDir,
                                             "Filter any number of pictures; the results go there, "
                                             "each under its input's name, with .png "
                                             "for .jpg and .bmp");
    addWhole(
        command, "--jobs",
        "Pictures, or tiles of one picture, that are worked on at once; as many as there are "
        "processors if not given",
        [&pictures](long jobs) { pictures.jobs = jobs; }, 1, 1024);
    addWhole(
        command, "--max-pixels", "Refuse larger pictures; 200 million pels if not given",
        [&pictures](long most) { pictures.maxPixels = most; }, 1);
    CLI::Option* force = addForce(command, pictures.existing);
    command
        .add_flag("--skip-existing", pictures.existing.skip,
                  "Leave out pictures whose result exists, as a stopped run left it")
        ->excludes(force);
    return outDir;
}
