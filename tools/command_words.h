// The words of a command line, before anything is known of options.
#pragma once

#include <string>
#include <vector>

/// The words of each command: `then` stands between filters that are applied one after the other. A
/// --rescale has its percentage. There is always at least one command. Throws BadArgument when
/// nothing stands before or behind a `then`.
std::vector<std::vector<std::string>> commandsOf(const std::vector<std::string>& words);

/// Whether the command of this name can be meant. Only then are its options added: with those of
/// all commands that was a third of what the program did before its work.
bool isNamed(const std::string& command, const std::vector<std::string>& words);
