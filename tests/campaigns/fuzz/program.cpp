// The program's side of things: command lines, pictures and archives in files.
//
// An input is the arguments, a line each, a zero byte, and the content of the file "f". The command
// runs in an empty folder of its own beside "good.png", and only when no argument leads out of it.
#include <filt/fft.h>

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <vector>

#include "input.h"
#include "tools/command_line.h"
#include "tools/failure.h"
#include "tools/output_file.h"
#include "tools/picture_file.h"
#include "tools/picture_output.h"

namespace {

namespace fs = std::filesystem;

struct NoWhere : std::streambuf {
    int overflow(int c) override { return traits_type::not_eof(c); }
};

class Folder {
  public:
    Folder() {
        const fs::path root = fs::is_directory("/dev/shm") ? "/dev/shm" : fs::temp_directory_path();
        std::string name = root / "mvfreq-fuzz-XXXXXX";
        if (!mkdtemp(name.data())) std::abort();
        path_ = name;
        std::cout.rdbuf(&silence_);
        const Visit visit(*this);
        writeGoodPicture();
    }
    ~Folder() {
        std::cout.rdbuf(nullptr);
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }

    /// Makes it the working directory.
    class Visit {
      public:
        explicit Visit(const Folder& folder) { fs::current_path(folder.path_); }
        ~Visit() { fs::current_path(home_); }
        Visit(const Visit&) = delete;
        Visit& operator=(const Visit&) = delete;

      private:
        fs::path home_ = fs::current_path();
    };

    static void write(const char* name, std::string_view content) {
        std::ofstream(name, std::ios::binary) << content;
    }

    /// Nothing that a run has written is there for the next one.
    static void tidy() {
        for (const auto& entry : fs::directory_iterator(".")) {
            if (entry.path().filename() != "good.png") fs::remove_all(entry.path());
        }
    }

  private:
    static void writeGoodPicture() {
        mvPelBuffer<unsigned char> picture(7, 5);
        for (long y = 0; y < 5; ++y) {
            for (long x = 0; x < 7; ++x) {
                picture.pointToRow(y)[x] = static_cast<unsigned char>(40 * x + y);
            }
        }
        OutputFiles files;
        writePicture(files.add("good.png"), picture);
        files.publish();
    }

    fs::path path_;
    NoWhere silence_;
};

std::vector<std::string> argumentsOf(std::string_view lines) {
    std::vector<std::string> arguments = {"mvfreq"};
    while (!lines.empty()) {
        const fuzz::Input line = fuzz::split(lines, '\n');
        arguments.emplace_back(line.heading);
        lines = line.body;
    }
    return arguments;
}

// Such a filter has more gains than can be filled in no time.
bool asksForMuch(const std::string& option, const std::string& value) {
    const bool isWidth =
        option.find("sigma") != std::string::npos || option.find("plateau") != std::string::npos;
    const std::string text = option + ' ' + value;
    const std::size_t at = text.find_first_of("0123456789.");
    return isWidth && at != std::string::npos && std::strtod(&text[at], nullptr) > 2;
}

bool asksForMuch(const std::vector<std::string>& arguments) {
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const bool isLast = i + 1 == arguments.size();
        if (asksForMuch(arguments[i], isLast ? std::string() : arguments[i + 1])) return true;
    }
    return false;
}

Work readArguments(std::vector<std::string> arguments) {
    return readCommandLine(arguments);
}

// All that main() knows a text for.
template <class Call>
void tolerate(Call call) {
    try {
        call();
    } catch (const BadArgument&) {
    } catch (const Failure&) {
    } catch (const mvException&) {
    } catch (const std::length_error&) {
    }
}

// A page stays behind for the browser and would fill the disk; a search for filters takes seconds.
bool isLeftOut(const std::vector<std::string>& arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument == "explore" || argument == "suggest";
    });
}

// What the fuzzer itself was given to read is none of its inputs.
bool usesStandardStreams(const std::vector<std::string>& arguments) {
    return std::any_of(arguments.begin(), arguments.end(), [](const std::string& argument) {
        return argument == "-" || argument.ends_with("=-");
    });
}

void run(std::string_view lines) {
    const std::vector<std::string> arguments = argumentsOf(lines);
    const Work work = readArguments(arguments);
    const bool staysHere = lines.find('/') == std::string_view::npos;
    const bool isTame =
        !asksForMuch(arguments) && !isLeftOut(arguments) && !usesStandardStreams(arguments);
    if (staysHere && isTame) work();
}

// Pictures that take long, or more memory than the fuzzer allows, are refused as users may refuse
// them.
constexpr long kMostPels = 1'000'000;

bool isTooLarge() {
    try {
        readPicture("f", {Channels::each, kMostPels});
    } catch (const Failure& failure) {
        return std::string(failure.what()).find("--max-pixels") != std::string::npos;
    }
    return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    const fuzz::Input input = fuzz::split(fuzz::asText(data, size), '\0');
    const Folder::Visit visit(folder);
    Folder::write("f", input.body);
    tolerate([&] {
        if (!isTooLarge() && !input.heading.empty()) run(input.heading);
    });
    Folder::tidy();
    return 0;
}
