// The options for what stands out in a result.
#include "find_options.h"

#include <CLI/CLI.hpp>

#include "call_files.h"
#include "failure.h"
#include "numbers.h"

void addFindOptions(CLI::App& command, FindOptions& options, CLI::Option* outDir) {
    CLI::Option* list = command.add_flag(
        "--list", options.list,
        "Print what stands out in the result: the place of the strongest pel, the box, the number "
        "of pels, and the strength, the strongest first. A strength of 10 is ten times as far from "
        "the median of the result as its pels usually are (as their standard deviation, if they "
        "are noise)");
    command.add_flag("--json", options.json, "The same as JSON, a line for each picture")
        ->excludes(list);
    addNumber(
        command, "--threshold",
        "Strength from which on a place stands out; 10 if not given. What is weaker than half of "
        "it parts two places",
        [&options](double threshold) {
            if (threshold <= 0) throw CLI::ValidationError("--threshold", "must be above 0");
            options.threshold = threshold;
        });
    addOutput(command, "--overlay", options.overlay,
              "Also write the picture itself with a frame around each of these places")
        ->excludes(outDir);
}

void requireSense(const FindOptions& options) {
    if (!options.threshold || options.isAsked()) return;
    throw BadArgument("--threshold: goes with --list, --json or --overlay");
}
