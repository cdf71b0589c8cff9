// Filters proposed from pictures of a good surface.
#include "suggest_command.h"

#include <CLI/CLI.hpp>
#include <suggest/suggest.h>

#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "attention.h"
#include "call_files.h"
#include "failure.h"
#include "numbers.h"
#include "output_file.h"
#include "picture_output.h"
#include "printable.h"
#include "proposal_plot.h"
#include "proposal_text.h"
#include "shell_words.h"

namespace {

// What swings around zero by a few grey levels looks black.
std::vector<std::string> withRescale(std::vector<std::string> arguments) {
    arguments.emplace_back("--rescale");
    return arguments;
}

struct SuggestCommand {
    std::vector<std::string> pictures;
    std::vector<double> radii;
    std::optional<double> direction;
    std::optional<std::string> plot;
    Existing existing;
    bool json = false;

    ExitCode run() const {
        requireInputs(pictures);
        if (plot) requireFreeOutputs(pictures, {{*plot, Role::picture}}, existing);
        const std::vector<GreyPicture> read = readAll();
        const mvSuggestions found = proposals(read);
        if (!found.refusal.empty()) throw Failure(pictures.front() + ": " + found.refusal);
        if (plot) writePlot(read.front().pels, found);
        printOut(json ? asJson(found) : asTable(found));
        if (json) sayRemarks(found);
        return exitGood;
    }

  private:
    std::vector<GreyPicture> readAll() const {
        std::vector<GreyPicture> read;
        for (const std::string& path : pictures) {
            read.push_back(readGrey(path));
            if (read.back().white != read.front().white) {
                throw Failure(path + ": has not as many bits a pel as " + pictures.front());
            }
        }
        return read;
    }

    mvSuggestions proposals(const std::vector<GreyPicture>& read) const {
        std::vector<mvPelBuffer_const<double>> images;
        images.reserve(read.size());
        for (const GreyPicture& each : read) images.push_back(each.pels);
        mvSuggestOptions options{.direction = direction, .white = read.front().white};
        if (!radii.empty()) options.radii = radii;
        options.progress = [](double part) {
            showStage("searching", part);
            checkInterrupted();
        };
        return mfSuggest(images, options);
    }

    std::string asTable(const mvSuggestions& found) const {
        std::string text = "radius  grey levels  line\n";
        for (const mvSuggestion& each : found.filters) {
            text += inColumn(shortNumber(each.radius, 2), 6) +
                    inColumn(shortNumber(each.levels), 13) + "  " +
                    lineFor(withRescale(each.arguments), pictures.front()) + "\n";
        }
        for (const std::string& remark : found.remarks) text += remark + "\n";
        return text;
    }

    static std::string asJson(const mvSuggestions& found) {
        std::vector<std::string> objects;
        for (const mvSuggestion& each : found.filters) {
            objects.push_back("{\"radius\": " + mfNumberText(each.radius) +
                              ", \"levels\": " + mfNumberText(mfRoundedNumber(each.levels)) +
                              ", \"arguments\": " + jsonList(each.arguments) + "}");
        }
        return jsonLines(objects);
    }

    static void sayRemarks(const mvSuggestions& found) {
        for (const std::string& remark : found.remarks) {
            std::fprintf(stderr, "mvfreq: %s\n", remark.c_str());
        }
    }

    void writePlot(const mvPelBuffer<double>& picture, const mvSuggestions& found) const {
        OutputFiles outputs;
        writePicture(outputs.add(*plot), proposalPlot(picture, found.filters));
        outputs.publish();
    }
};

void addRadius(CLI::App& command, std::vector<double>& radii) {
    constexpr double kLeast = 1, kMost = 200;
    addNumber(
        command, "--radius",
        "Propose for this radius alone, 1 to 200; else 1.5, 2, 3, 4, 6, 8, 12, 16, 24, 32, 48",
        [&radii](double radius) { radii = {mfRoundedNumber(radius)}; }, kLeast, kMost);
}

}  // namespace

void describeSuggest(CLI::App& command, Work& work) {
    const auto run = std::make_shared<SuggestCommand>();
    command
        .add_option("pictures", run->pictures,
                    "Pictures of the surface without defects, of one depth; their grey counts")
        ->required();
    addRadius(command, run->radii);
    addNumber(command, "--direction", run->direction,
              "Propose lobes for scratches across this direction, in degrees: 0 for vertical "
              "scratches, 90 for horizontal ones");
    command.add_flag("--json", run->json,
                     "Print a list of objects: radius, levels, and arguments, which go between "
                     "mvfreq and the names of input and output");
    addOutput(command, "--plot", run->plot,
              "Also draw the grey levels over the radius, and the rings on the spectrum");
    addForce(command, run->existing);
    command.footer(
        "A spot of radius r is a soft bump: half its height stands 1.2 r from its\n"
        "middle. The grey levels are those at which it stands out threefold: its peak\n"
        "behind the filter is three times what the surface itself exceeds in a\n"
        "thousandth of its pels. Where waves of the surface drown it, they are removed\n"
        "first, in the same line.\n"
        "Example:\n  mvfreq suggest --radius 4 examples/pictures/woven.png");
    command.callback([run, &work] { work = [run] { return run->run(); }; });
}
