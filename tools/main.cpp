// The program mvfreq: errors become texts and exit codes here.
#include <filt/fft.h>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

#include "attention.h"
#include "command_line.h"
#include "failure.h"
#include "input_file.h"

namespace {

constexpr int failed = 1;
constexpr int badArguments = 2;
constexpr int stopped = 130;

int report(const std::string& text, int exitCode) {
    std::fprintf(stderr, "mvfreq: %s\n", text.c_str());
    return exitCode;
}

// To be called while an exception is handled.
int reportException() {
    if (interrupted()) return report("interrupted, nothing was written", stopped);
    try {
        throw;
    } catch (const BadArgument& error) {
        return report(error.what(), badArguments);
    } catch (const mvFrequencyDefs::InvalidArgument& error) {
        return report(textOf(error), badArguments);
    } catch (const std::length_error&) {
        return report("the filter is too large: sigma or plateau is out of range", badArguments);
    } catch (const mvException& error) {
        return report(textOf(error), failed);
    } catch (const std::bad_alloc&) {
        return report("memory is short", failed);
    } catch (const std::exception& error) {
        return report(error.what(), failed);
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Attention attention;
        readCommandLine(argc, argv)();
        return 0;
    } catch (...) {
        return reportException();
    }
}
