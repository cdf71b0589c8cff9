// What each filter command says of its filter.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "filter_recipe.h"
#include "parser.h"

/// A filter on a command line: its own options, and what they ask for.
class FilterStep {
  public:
    virtual ~FilterStep() = default;

    virtual void addOptions(CLI::App& command) = 0;

    /// One filter, or several that are applied in this order. Throws for parameters that no plane
    /// takes, for files that cannot be read, and for pictures of more than `maxPixels` pels.
    virtual ChainRecipe recipe(long maxPixels) const = 0;

    /// The files that it reads.
    virtual std::vector<std::string> inputs() const { return {}; }
};

/// A filter command.
struct StepKind {
    const char* name;
    const char* purpose;
    const char* example;
    std::shared_ptr<FilterStep> (*make)();
    bool buildsFilter;  // others come from an archive
};

/// All of them, in the order of the help.
const std::vector<StepKind>& stepKinds();
