// What the program asks of the operating system. Names of files are UTF-8 everywhere.
#pragma once

#include <compare>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What a file is, whatever name it is given.
struct FileIdentity {
    std::uint64_t device;
    std::uint64_t number;

    // NOLINTNEXTLINE(modernize-use-nullptr): reports what the compiler writes.
    friend auto operator<=>(const FileIdentity&, const FileIdentity&) = default;
};

/// Nothing when there is no such file.
std::optional<FileIdentity> identityOf(const std::string& path);

/// True when no file can have that name, since it is too long.
bool isTooLong(const std::string& path);

/// A name as the system's path, and the other way round.
std::filesystem::path pathOf(const std::string& name);
std::string nameOf(const std::filesystem::path& path);

/// Opens a file of bytes for reading, or makes a new one for writing; null, with `errno`, when that
/// cannot be.
std::FILE* openBytes(const std::string& path);
std::FILE* makeBytes(const std::filesystem::path& path);

/// Makes a file without a name in a folder, for writing: the system takes it away when the program
/// ends, however that is. Null where there are none, or nameBytes could not do its part.
std::FILE* makeNameless(const std::filesystem::path& folder);

/// Gives it the name; false, with `errno`, when it cannot have that, as when another file has it.
bool nameBytes(std::FILE* nameless, const std::filesystem::path& path);

/// Lets others do with the open file what those with these permissions may; a refusal is ignored.
void permit(std::FILE* file, std::filesystem::perms permissions);

/// As makeBytes, in the folder of temporary files, for this user alone. The six X before the name's
/// ending become characters that no other file's name has there.
std::FILE* makeTemporary(std::string& path);

/// The file's size; nothing for a pipe.
std::optional<std::uint64_t> sizeOfBytes(std::FILE* file);

/// Goes to that place, counted as fseek counts; gives the place, from the first byte.
std::uint64_t seekBytes(std::FILE* file, std::uint64_t offset, int whence);

/// The name under which standard input can be opened; null where it has none.
extern const char* const kStandardInput;

/// The number of this process.
long processNumber();

bool outputIsTerminal();

/// Whether standard error is a terminal on which lines can be taken back.
bool errorsAreTerminal();

/// How many columns standard error has there, if that is known.
std::optional<int> columnsOfErrors();

/// Lets `note` have the signals that ask the program to stop, now and later. Waiting for a pipe
/// ends with them as well.
void catchStops(void (*note)(int));

/// The folder of this program.
std::filesystem::path programFolder();

/// Shows a page in the browser of the desktop, if there is one; does not wait for it.
void openInBrowser(const std::string& path);

/// The words of the command line in UTF-8, the program's name first. Prepares standard input and
/// output for bytes. Where the shell leaves patterns of file names as they are, they are replaced
/// by the sorted names of the files that fit, if any do.
std::vector<std::string> commandWords(int argc, char** argv);
