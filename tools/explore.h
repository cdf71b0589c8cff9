// The explorer: a page for the browser, with a picture in it.
#pragma once

#include <optional>
#include <string>

/// What the command line says of the explorer.
struct ExploreOptions {
    std::optional<std::string> picture;
    std::optional<std::string> page;  // where the page is, if not where it was installed
    bool opensBrowser = true;
};

/// Opens the page in the desktop's browser and prints where it is; without a desktop it only prints
/// that. A picture is put into a copy of the page, a temporary file that only its owner can read.
/// Throws a Failure for a page or a picture that cannot be read.
void explore(const ExploreOptions& options);
