// The words of a command line, before anything is known of options.
#pragma once

#include <string>
#include <vector>

/// The words of each command: `then` stands between filters that are applied one after the other. A
/// --rescale has its percentage. There is always at least one command. Throws BadArgument when
/// nothing stands before or behind a `then`.
std::vector<std::vector<std::string>> commandsOf(const std::vector<std::string>& words);
