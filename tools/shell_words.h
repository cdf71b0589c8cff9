// Words as a shell reads them.
#pragma once

#include <string>
#include <vector>

/// A line to paste: words with a space between them, in quotation marks where a shell would take
/// them apart or expand them.
std::string shellLine(const std::vector<std::string>& words);

/// A list of texts as JSON.
std::string jsonList(const std::vector<std::string>& words);
