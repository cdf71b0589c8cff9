// The files of one call, and what it may replace.
#include "call_files.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <set>
#include <utility>

#include "failure.h"
#include "filter_archive.h"
#include "picture_file.h"
#include "picture_format.h"
#include "standard_names.h"
#include "system.h"

namespace fs = std::filesystem;

namespace {

std::set<FileIdentity> identitiesOf(const std::vector<std::string>& paths) {
    std::set<FileIdentity> identities;
    for (const std::string& path : paths) {
        if (const auto identity = identityOf(path)) identities.insert(*identity);
    }
    return identities;
}

void requireName(const Output& output) {
    if (output.path.empty()) throw BadArgument("output: the name of a file is missing");
    if (!output.isGiven) return;
    if (output.role == Role::picture && namesOtherPicture(output.path)) {
        throw BadArgument(output.path +
                          ": pictures are written as PNG, TIFF, PGM and PPM; call it " +
                          writableName(output.path));
    }
    if (output.role == Role::archive && namesPicture(output.path)) {
        throw BadArgument(output.path + ": a filter is written as an archive, not as a picture");
    }
}

bool isArchive(const std::string& path) {
    try {
        return !loadFilters(path).list().empty();
    } catch (const Failure&) {
        return false;
    }
}

// What this program has written it may write again.
void requireOwn(const Output& output) {
    if (output.role == Role::picture && !isOwnPicture(output.path)) {
        throw BadArgument(output.path +
                          ": exists, and is no picture that mvfreq wrote (--force replaces it; "
                          "several inputs need --out-dir)");
    }
    if (output.role == Role::archive && !isArchive(output.path)) {
        throw BadArgument(output.path + ": exists, and is no filter (--force replaces it)");
    }
}

void requireFree(const Output& output, const std::set<FileIdentity>& inputs) {
    const std::optional<FileIdentity> identity = identityOf(output.path);
    if (!identity) return;
    if (inputs.contains(*identity)) {
        throw BadArgument(output.path + ": is an input of this call (--force replaces it)");
    }
    std::error_code ignored;
    if (!fs::is_regular_file(pathOf(output.path), ignored) ||
        fs::file_size(pathOf(output.path), ignored) == 0) {
        return;
    }
    requireOwn(output);
}

void requireNoTerminal() {
    if (outputIsTerminal()) {
        throw BadArgument("-: standard output is a terminal, which shows no files");
    }
}

void requirePossibleName(const Output& output) {
    if (isTooLong(output.path)) {
        throw BadArgument(output.path + ": " + systemText(ENAMETOOLONG));
    }
}

void requireNoFolder(const Output& output) {
    std::error_code ignored;
    if (!fs::is_directory(pathOf(output.path), ignored)) return;
    throw BadArgument(output.path + ": is a folder (--out-dir writes pictures into one)");
}

}  // namespace

CLI::Option* addForce(CLI::App& command, Existing& existing) {
    return command.add_flag("--force", existing.force,
                            "Replace inputs, and files that mvfreq did not write");
}

CLI::Option* addOutput(CLI::App& command, const char* name, std::optional<std::string>& path,
                       const char* help) {
    const auto take = [name, &path](const std::string& text) {
        if (text.empty()) throw CLI::ValidationError(name, "the name of a file is missing");
        path = text;
    };
    return command.add_option_function<std::string>(name, take, help);
}

void requireFreeOutputs(const std::vector<std::string>& inputs, const std::vector<Output>& outputs,
                        const Existing& existing) {
    const std::set<FileIdentity> identities = identitiesOf(inputs);
    for (const Output& output : outputs) {
        requireName(output);
        if (isStandard(output.path)) {
            requireNoTerminal();
            continue;
        }
        requirePossibleName(output);
        requireNoFolder(output);
        if (!existing.force) requireFree(output, identities);
    }
}

void requireInputs(const std::vector<std::string>& inputs) {
    if (std::find(inputs.begin(), inputs.end(), "") != inputs.end()) {
        throw BadArgument("input: the name of a file is missing");
    }
    if (std::count_if(inputs.begin(), inputs.end(), isStandard) > 1) {
        throw BadArgument("-: standard input can be read only once");
    }
}
