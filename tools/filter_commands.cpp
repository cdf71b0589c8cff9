// The commands that filter a picture.
#include "filter_commands.h"

#include <CLI/CLI.hpp>

#include "command_words.h"
#include "failure.h"
#include "filter_options.h"
#include "picture_run.h"
#include "standard_names.h"

namespace {

// What a run reads and writes, and its filters.
struct FilterCommand {
    PictureArguments pictures;
    FilterOptions options;
    FilterSteps steps;

    std::vector<std::string> inputs() const {
        std::vector<std::string> all;
        for (const auto& step : steps) {
            const std::vector<std::string> each = step->inputs();
            all.insert(all.end(), each.begin(), each.end());
        }
        return all;
    }

    ChainRecipe recipe() const {
        ChainRecipe all;
        for (const auto& step : steps) {
            const ChainRecipe each = step->recipe(pictures.maxPixels);
            all.insert(all.end(), each.begin(), each.end());
        }
        return all;
    }

    // The list is for standard output, too.
    void requireRoomForList() const {
        std::vector<Output> outputs = otherOutputs(options);
        if (!pictures.outDir) outputs.push_back({pictures.files().front().output, Role::picture});
        for (const Output& output : outputs) {
            if (isStandard(output.path)) throw BadArgument("-: standard output takes the list");
        }
    }

    ExitCode run() const {
        requireSense(options.find);
        if (options.find.isListed()) requireRoomForList();
        requireFiles(pictures, {inputs(), otherOutputs(options)});
        SharedFilters filters(recipe());
        const auto filter = [&](const PictureFiles& files, int threads) {
            return filterPicture(files, options, filters, threads);
        };
        return runPictures(pictures, filter);
    }
};

void describe(CLI::App& options, Work& work, const StepKind& kind, const FilterSteps& before) {
    const auto command = std::make_shared<FilterCommand>();
    const std::shared_ptr<FilterStep> step = kind.make();
    command->steps = before;
    command->steps.push_back(step);
    step->addOptions(options);
    CLI::Option* outDir =
        addPictures(options, command->pictures,
                    "the magnitudes, of the same depth; in colour where --channels says so");
    addFilterOptions(options, command->options, outDir, kind.buildsFilter || !before.empty());
    options.footer(std::string("Example:\n  ") + kind.example);
    options.callback([command, &work] { work = [command] { return command->run(); }; });
}

}  // namespace

void addFilterSteps(CLI::App& app, const std::vector<std::string>& words, FilterSteps& steps) {
    for (const StepKind& kind : stepKinds()) {
        CLI::App& options = *app.add_subcommand(kind.name, kind.purpose);
        if (!isNamed(kind.name, words)) continue;
        const std::shared_ptr<FilterStep> step = kind.make();
        step->addOptions(options);
        options.callback([step, &steps] { steps.push_back(step); });
    }
}

void addFilterCommands(CLI::App& app, const std::vector<std::string>& words, Work& work,
                       const FilterSteps& before) {
    for (const StepKind& kind : stepKinds()) {
        CLI::App& options = *app.add_subcommand(kind.name, kind.purpose);
        if (!isNamed(kind.name, words)) continue;
        describe(options, work, kind, before);
    }
}
