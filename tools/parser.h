// The parser of command lines, by name: its header takes a compiler seconds, so that only the
// sources that add options include it.
#pragma once

namespace CLI {  // NOLINT(readability-identifier-naming): its own

class App;
class Option;

}  // namespace CLI
