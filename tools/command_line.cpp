// The command line of the program.
#include "command_line.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "archive_report.h"
#include "command_words.h"
#include "explore.h"
#include "failure.h"
#include "filter_commands.h"
#include "filter_view.h"
#include "numbers.h"
#include "peaks_command.h"
#include "picture_run.h"
#include "printable.h"
#include "spectrum.h"
#include "suggest_command.h"
#include "wrapped_text.h"

namespace {

void addAxes(CLI::App& command, bool& axes) {
    command.add_flag("--axes", axes, "Mark the axes in cycles per pixel, in a margin");
}

struct SpectrumCommand {
    PictureArguments pictures;
    SpectrumOptions options;
    std::string border;
};

void describeSpectrum(CLI::App& command, Work& work) {
    const auto run = std::make_shared<SpectrumCommand>();
    addPictures(command, run->pictures, "a square of 8 bits, DC in the middle");
    addAxes(command, run->options.axes);
    addNumber(
        command, "--max-frequency",
        "Show the middle up to that many cycles per pixel, 0.5 at most, enlarged",
        [run = run.get()](double most) {
            if (most <= 0) throw CLI::ValidationError("--max-frequency", "nothing is below 0");
            run->options.maxFrequency = most;
        },
        0, 0.5);
    command
        .add_option("--border", run->border,
                    "Changes nothing any more: the edges fade out, so that none shows")
        ->check(CLI::IsMember({"mirror", "zero"}));
    command.footer("Example:\n  mvfreq spectrum --axes examples/pictures/printed.png spectrum.png");
    command.callback([run, &work] {
        work = [run] {
            requireFiles(run->pictures, {});
            return runPictures(run->pictures, [&](const PictureFiles& files, int) {
                writeSpectrum(files, run->options);
                return PictureReport();
            });
        };
    });
}

struct ViewCommand {
    std::string archive;
    std::string output;
    Existing existing;
    bool axes = false;
};

void describeView(CLI::App& command, Work& work) {
    const auto run = std::make_shared<ViewCommand>();
    command.add_option("archive", run->archive, "Filter that --save wrote")->required();
    command
        .add_option("output", run->output,
                    "8-bit grey picture, by its ending .png, .tif or .pgm, DC in the middle: "
                    "black clears, white is the largest gain")
        ->required();
    addAxes(command, run->axes);
    addForce(command, run->existing);
    command.footer(
        "Example:\n"
        "  mvfreq gabor --frequency 0.2 --angle 45 --sigma 0.02 --save filter.mva \\\n"
        "    examples/pictures/printed.png half.png\n"
        "  mvfreq view --axes filter.mva response.png");
    command.callback([run, &work] {
        work = [run] {
            requireInputs({run->archive});
            requireFreeOutputs({run->archive}, {{run->output, Role::picture}}, run->existing);
            viewFilter(run->archive, run->output, run->axes);
            return exitGood;
        };
    });
}

void printReport(const std::string& path) {
    requireInputs({path});
    std::ostringstream text;
    try {
        reportFile(path, text);
    } catch (...) {
        printOut(text.str());
        throw;
    }
    printOut(text.str());
}

void describeInfo(CLI::App& command, Work& work) {
    const auto path = std::make_shared<std::string>();
    command.add_option("archive", *path, "Archive of filters or errors; or a picture")->required();
    command.footer(
        "Example:\n"
        "  mvfreq bandpass --frequency 0.03 --sigma 0.012 --save filter.mva \\\n"
        "    examples/pictures/woven.png filtered.png\n"
        "  mvfreq info filter.mva");
    command.callback([path, &work] {
        work = [path] {
            printReport(*path);
            return exitGood;
        };
    });
}

void describeExplore(CLI::App& command, Work& work) {
    const auto options = std::make_shared<ExploreOptions>();
    command.add_option("picture", options->picture, "Picture to begin with");
    command.add_option("--page", options->page, "The explorer, if not where it was installed");
    command.add_flag("!--no-browser", options->opensBrowser,
                     "Only print the path of the page, as without a desktop");
    command.footer("Example:\n  mvfreq explore examples/pictures/woven.png");
    command.callback([options, &work] {
        work = [options] {
            if (options->picture) requireInputs({*options->picture});
            explore(*options);
            return exitGood;
        };
    });
}

struct Command {
    const char* name;
    const char* purpose;
    void (*describe)(CLI::App&, Work&);
};

// Those that filter no picture, in the order of the help.
constexpr Command kOtherCommands[] = {
    {"spectrum", "Write the centred log magnitude of the spectrum as an 8-bit picture",
     describeSpectrum},
    {"view", "Draw the response of a filter", describeView},
    {"explore", "Open a picture in the browser, to find a filter by eye", describeExplore},
    {"suggest", "Propose filters, from pictures of a good surface, for spots of each size",
     describeSuggest},
    {"peaks", "List the strongest waves of a picture, each with the line that removes it",
     describePeaks},
    {"info", "Tell what an archive holds", describeInfo},
};

void addOtherCommands(CLI::App& app, const std::vector<std::string>& words, Work& work) {
    for (const Command& command : kOtherCommands) {
        CLI::App& options = *app.add_subcommand(command.name, command.purpose);
        if (!isNamed(command.name, words)) continue;
        command.describe(options, work);
    }
}

// Reports a misspelt word, not the right one that is missing because of it.
std::string complaintOf(const CLI::App& app, const CLI::ParseError& outcome, const char* command) {
    const std::vector<std::string> unknown = app.remaining(true);
    if (unknown.empty()) return outcome.what();
    const std::string& word = unknown.front();
    if (word.starts_with('-')) return word + ": there is no such option";
    if (app.get_subcommands().empty()) return word + ": there is no such " + command;
    return word + ": is not expected";
}

constexpr std::size_t kHelpColumns = 80;

// CLI11 reports help and version as exceptions, too.
void printOrReject(const CLI::App& app, const CLI::ParseError& outcome, const char* command) {
    if (outcome.get_exit_code() != 0) {
        throw BadArgument(complaintOf(app, outcome, command) + " (mvfreq --help tells more)");
    }
    std::ostringstream text;
    app.exit(outcome, text, text);
    printOut(wrapped(text.str(), kHelpColumns));
}

// CLI11 takes the words from the end.
void parse(CLI::App& app, std::vector<std::string> words) {
    std::reverse(words.begin(), words.end());
    app.parse(words);
}

void requireOwnWords(const CLI::App& app) {
    const std::vector<std::string> unknown = app.remaining(true);
    if (unknown.empty()) return;
    const std::string& word = unknown.front();
    const std::string name = word.starts_with("--") ? word.substr(0, word.find('=')) : word;
    throw BadArgument(name + (app.get_subcommands().empty()
                                  ? ": is no filter that `then` can follow"
                                  : ": before `then` stand only a filter and its own "
                                    "options"));
}

// Reads a filter that others follow. False when it was only asked for its help.
bool readStep(const std::vector<std::string>& words, FilterSteps& steps) {
    CLI::App app("A filter that others follow.", "mvfreq");
    app.require_subcommand(1);
    addFilterSteps(app, words, steps);
    try {
        parse(app, words);
    } catch (const CLI::ParseError& outcome) {
        requireOwnWords(app);
        printOrReject(app, outcome, "filter");
        return false;
    }
    return true;
}

}  // namespace

Work readCommandLine(const std::vector<std::string>& words) {
    const std::vector<std::vector<std::string>> commands = commandsOf(words);
    FilterSteps steps;
    for (std::size_t i = 0; i + 1 < commands.size(); ++i) {
        if (!readStep(commands[i], steps)) return [] { return exitGood; };
    }
    CLI::App app(
        "Filters pictures in the frequency domain. Frequencies and widths are in cycles per pixel: "
        "a texture that repeats every 8 pixels has the frequency 0.125.",
        "mvfreq");
    app.set_version_flag("--version", "mvfreq " MVFREQ_VERSION);
    app.require_subcommand(1);
    app.footer(
        "mvfreq COMMAND --help shows the options of a command and an example. The\n"
        "pictures of the examples come with the sources; Debian has them in\n"
        "/usr/share/doc/mvfreq-doc.\n\n"
        "Filters are applied one after the other, in one pass, when `then` stands between\n"
        "them; all else, pictures included, follows the last one:\n"
        "  mvfreq gaborreject --frequency 0.2 --angle 45 --sigma 0.02 --both-sides \\\n"
        "    then gaborreject --frequency 0.2 --angle 135 --sigma 0.02 --both-sides \\\n"
        "    examples/pictures/printed.png descreened.png");
    Work work = [] { return exitGood; };
    addFilterCommands(app, commands.back(), work, steps);
    if (steps.empty()) addOtherCommands(app, commands.back(), work);
    try {
        parse(app, commands.back());
    } catch (const CLI::ParseError& outcome) {
        printOrReject(app, outcome, steps.empty() ? "command" : "filter");
    }
    return work;
}
