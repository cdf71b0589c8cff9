// The program mvfreq: errors become texts and exit codes here.
#include <cstdio>

#include "attention.h"
#include "command_line.h"
#include "failure.h"
#include "printable.h"
#include "progress_line.h"
#include "system.h"

namespace {

int say(const Report& report) {
    std::fprintf(stderr, "mvfreq: %s\n", printable(report.text).c_str());
    return report.exitCode;
}

ExitCode run(const std::vector<std::string>& words) {
    ProgressLine line(stageText);
    const Attention attention(&line);
    return readCommandLine(words)();
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(commandWords(argc, argv));
    } catch (...) {
        if (interrupted()) return say({"interrupted, nothing was written", exitStopped});
        return say(reportOfException());
    }
}
