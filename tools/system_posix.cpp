// What the program asks of POSIX.
#include <fcntl.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "system.h"

const char* const kStandardInput = "/dev/stdin";

std::filesystem::path pathOf(const std::string& name) {
    return name;
}

std::string nameOf(const std::filesystem::path& path) {
    return path.native();
}

std::optional<FileIdentity> identityOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

bool isTooLong(const std::string& path) {
    struct stat ignored {};
    return stat(path.c_str(), &ignored) != 0 && errno == ENAMETOOLONG;
}

std::FILE* openBytes(const std::string& path) {
    return std::fopen(path.c_str(), "rb");
}

std::FILE* makeBytes(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "wbx");
}

namespace {

// Links to it are links to the open file.
std::string linkOf(int file) {
    return "/proc/self/fd/" + std::to_string(file);
}

// Null, and closed, when it is none that can be named later.
std::FILE* streamOf(int file) {
    if (file < 0) return nullptr;
    std::FILE* const stream =
        access(linkOf(file).c_str(), F_OK) == 0 ? fdopen(file, "wb") : nullptr;
    if (!stream) close(file);
    return stream;
}

}  // namespace

std::FILE* makeNameless(const std::filesystem::path& folder) {
#ifdef O_TMPFILE
    return streamOf(open(folder.c_str(), O_TMPFILE | O_WRONLY, 0666));
#else
    return nullptr;
#endif
}

bool nameBytes(std::FILE* nameless, const std::filesystem::path& path) {
    const std::string link = linkOf(fileno(nameless));
    return linkat(AT_FDCWD, link.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

void permit(std::FILE* file, std::filesystem::perms permissions) {
    fchmod(fileno(file), static_cast<mode_t>(permissions));
}

std::FILE* makeTemporary(std::string& path) {
    const int ending = static_cast<int>(path.size() - path.rfind('.'));
    const int file = mkstemps(path.data(), ending);
    return file < 0 ? nullptr : fdopen(file, "wb");
}

std::optional<std::uint64_t> sizeOfBytes(std::FILE* file) {
    struct stat status {};
    if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
}

std::uint64_t seekBytes(std::FILE* file, std::uint64_t offset, int whence) {
    fseeko(file, static_cast<off_t>(offset), whence);
    return static_cast<std::uint64_t>(ftello(file));
}

long processNumber() {
    return getpid();
}

bool outputIsTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

bool errorsAreTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

std::optional<int> columnsOfErrors() {
    winsize size{};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0) return std::nullopt;
    return size.ws_col;
}

// Without SA_RESTART, so that waiting for a pipe ends as well.
void catchStops(void (*note)(int)) {
    struct sigaction action {};
    action.sa_handler = note;
    for (const int signal : {SIGINT, SIGTERM}) sigaction(signal, &action, nullptr);
}

std::filesystem::path programFolder() {
    std::error_code ignored;
    return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

namespace {

bool hasDesktop() {
    const auto isSet = [](const char* name) {
        // NOLINTNEXTLINE(concurrency-mt-unsafe): nobody changes the environment.
        const char* value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    return isSet("DISPLAY") || isSet("WAYLAND_DISPLAY");
}

}  // namespace

// What the browser does with the page cannot be seen from here.
void openInBrowser(const std::string& path) {
    if (!hasDesktop()) return;
    std::string command = "xdg-open", argument = path;
    const std::array<char*, 3> arguments{command.data(), argument.data(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    posix_spawnp(&child, command.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
}

std::vector<std::string> commandWords(int argc, char** argv) {
    return {argv, argv + argc};
}
