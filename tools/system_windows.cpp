// What the program asks of Windows. Its own functions take names of 16-bit characters, which are
// the same whatever code page the system has.
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>
// Behind it: what it declares stands on that.
#include <shellapi.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <memory>

#include "system.h"

namespace fs = std::filesystem;

namespace {

std::string utf8(const wchar_t* text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
    result.resize(result.size() - 1);
    return result;
}

struct Closing {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

// The handle itself may be a folder's, which no C function opens.
std::unique_ptr<void, Closing> handleOf(const fs::path& path) {
    constexpr DWORD kSharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE handle = CreateFileW(path.c_str(), 0, kSharing, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    return std::unique_ptr<void, Closing>(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

bool isTerminal(DWORD stream) {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

// The code page of the console is given back at the end: other programs share it.
class ConsoleOfUtf8 {
  public:
    ConsoleOfUtf8() : former_(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
    ~ConsoleOfUtf8() { SetConsoleOutputCP(former_); }
    ConsoleOfUtf8(const ConsoleOfUtf8&) = delete;
    ConsoleOfUtf8& operator=(const ConsoleOfUtf8&) = delete;

  private:
    UINT former_;
};

bool isPattern(const std::wstring& word) {
    return word.find_first_of(L"*?") != std::wstring::npos && word.front() != L'-';
}

// No file's name has * or ?, so that nothing is lost. Only the last part of a path is a pattern.
std::vector<std::string> filesOf(const std::wstring& pattern) {
    std::vector<std::string> names;
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(pattern.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    const std::size_t end = pattern.find_last_of(L"/\\:");
    const std::wstring folder = pattern.substr(0, end == std::wstring::npos ? 0 : end + 1);
    do {
        const bool isFolder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (!isFolder) names.push_back(utf8((folder + found.cFileName).c_str()));
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::sort(names.begin(), names.end());
    return names;
}

void appendWords(std::vector<std::string>& words, const std::wstring& word) {
    std::vector<std::string> files;
    if (isPattern(word)) files = filesOf(word);
    if (files.empty()) files.push_back(utf8(word.c_str()));
    words.insert(words.end(), files.begin(), files.end());
}

void (*noteStop)(int) = nullptr;

// Windows calls it in a thread of its own. When the console closes it ends the program as soon as
// this returns, or a few seconds later; the program itself needs less.
BOOL WINAPI stopOfConsole(DWORD event) {
    noteStop(SIGINT);
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) Sleep(INFINITE);
    return TRUE;
}

}  // namespace

const char* const kStandardInput = nullptr;

fs::path pathOf(const std::string& name) {
    return std::u8string(name.begin(), name.end());
}

std::string nameOf(const fs::path& path) {
    return utf8(path.c_str());
}

std::optional<FileIdentity> identityOf(const std::string& path) {
    const auto handle = handleOf(pathOf(path));
    BY_HANDLE_FILE_INFORMATION file{};
    if (!handle || !GetFileInformationByHandle(handle.get(), &file)) return std::nullopt;
    return FileIdentity{file.dwVolumeSerialNumber,
                        std::uint64_t{file.nFileIndexHigh} << 32 | file.nFileIndexLow};
}

bool isTooLong(const std::string& path) {
    if (GetFileAttributesW(pathOf(path).c_str()) != INVALID_FILE_ATTRIBUTES) return false;
    return GetLastError() == ERROR_FILENAME_EXCED_RANGE;
}

std::FILE* openBytes(const std::string& path) {
    return _wfopen(pathOf(path).c_str(), L"rb");
}

std::FILE* makeBytes(const fs::path& path) {
    const int file =
        _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY, _S_IREAD | _S_IWRITE);
    return file < 0 ? nullptr : _fdopen(file, "wb");
}

// There are none: files that vanish with their program can have no other name before.
std::FILE* makeNameless(const fs::path& /*folder*/) {
    return nullptr;
}

bool nameBytes(std::FILE* /*nameless*/, const fs::path& /*path*/) {
    errno = ENOSYS;
    return false;
}

// Files of Windows have those of their folder.
void permit(std::FILE* /*file*/, fs::perms /*permissions*/) {}

// The folder of temporary files is this user's own.
std::FILE* makeTemporary(std::string& path) {
    constexpr unsigned kNumbers = 1'000'000;
    const std::size_t place = path.rfind("XXXXXX");
    for (unsigned number = GetCurrentProcessId() % kNumbers;; number = (number + 1) % kNumbers) {
        path.replace(place, 6, std::to_string(kNumbers + number).substr(1));
        std::FILE* const file = makeBytes(pathOf(path));
        if (file || errno != EEXIST) return file;
    }
}

std::optional<std::uint64_t> sizeOfBytes(std::FILE* file) {
    struct _stat64 status {};
    if (_fstat64(_fileno(file), &status) != 0 || (status.st_mode & _S_IFREG) == 0)
        return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
}

std::uint64_t seekBytes(std::FILE* file, std::uint64_t offset, int whence) {
    _fseeki64(file, static_cast<std::int64_t>(offset), whence);
    return static_cast<std::uint64_t>(_ftelli64(file));
}

long processNumber() {
    return static_cast<long>(GetCurrentProcessId());
}

bool outputIsTerminal() {
    return isTerminal(STD_OUTPUT_HANDLE);
}

// Older consoles know no control sequences.
bool errorsAreTerminal() {
    const HANDLE errors = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(errors, &mode) &&
           SetConsoleMode(errors, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

std::optional<int> columnsOfErrors() {
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &screen)) return std::nullopt;
    return screen.srWindow.Right - screen.srWindow.Left + 1;
}

void catchStops(void (*note)(int)) {
    noteStop = note;
    SetConsoleCtrlHandler(stopOfConsole, TRUE);
}

fs::path programFolder() {
    std::wstring name(32768, L'\0');
    name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    return fs::path(name).parent_path();
}

void openInBrowser(const std::string& path) {
    ShellExecuteW(nullptr, L"open", pathOf(path).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

std::vector<std::string> commandWords(int, char**) {
    static const ConsoleOfUtf8 console;
    for (std::FILE* stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    int count = 0;
    wchar_t** const given = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> words;
    for (int at = 0; at < count; ++at) appendWords(words, given[at]);
    LocalFree(given);
    return words;
}
