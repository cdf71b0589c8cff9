// Running the program mvfreq in a folder of its own.
#include "support/program.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

constexpr char kOutName[] = ".out";
constexpr char kErrName[] = ".err";

fs::path newFolder() {
    std::string name = fs::temp_directory_path() / "mvfreq-test-XXXXXX";
    if (!mkdtemp(name.data())) throw std::runtime_error("mkdtemp");
    return name;
}

void redirect(int descriptor, const char* name) {
    const int file = open(name, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(file, descriptor);
    close(file);
}

}  // namespace

ProgramTest::ProgramTest() : folder_(newFolder()) {}

ProgramTest::~ProgramTest() {
    fs::remove_all(folder_);
}

pid_t ProgramTest::start(const Arguments& arguments, int terminal) const {
    std::string program = MVFREQ_PROGRAM;
    Arguments copies = arguments;
    std::vector<char*> argv{program.data()};
    for (std::string& argument : copies) argv.push_back(argument.data());
    argv.push_back(nullptr);

    const pid_t process = fork();
    if (process != 0) return process;
    if (chdir(folder_.c_str()) != 0) _exit(126);
    redirect(STDOUT_FILENO, kOutName);
    redirect(STDERR_FILENO, kErrName);
    if (terminal >= 0) {
        dup2(terminal, STDOUT_FILENO);
        dup2(terminal, STDERR_FILENO);
    }
    execv(program.c_str(), argv.data());
    _exit(127);
}

Outcome ProgramTest::wait(pid_t process) const {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) continue;
    const int exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return {exitCode, contents(kOutName), contents(kErrName)};
}

void ProgramTest::send(pid_t process, int signal) const {
    kill(process, signal);
    const std::string none(16, '0');
    for (std::string line; line != "ShdPnd:\t" + none;) {
        std::ifstream status("/proc/" + std::to_string(process) + "/status");
        while (std::getline(status, line) && !line.starts_with("ShdPnd:")) continue;
        if (!status) return;
    }
}

Outcome ProgramTest::succeed(const Arguments& arguments) const {
    Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "");
    return outcome;
}

std::vector<std::string> ProgramTest::files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_)) {
        const std::string name = entry.path().filename();
        if (name != kOutName && name != kErrName) names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string ProgramTest::contents(const std::string& name) const {
    std::ifstream file(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void ProgramTest::write(const std::string& name, const std::string& contents) const {
    std::ofstream(path(name), std::ios::binary) << contents;
}
