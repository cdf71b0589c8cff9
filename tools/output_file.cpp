// Files that appear whole or not at all.
#include "output_file.h"

#include <atomic>
#include <cerrno>
#include <system_error>
#include <utility>

#include "attention.h"
#include "failure.h"
#include "printable.h"
#include "standard_names.h"
#include "system.h"

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const std::string& name, const std::string& reason) {
    throw Failure(outputName(name) + ": " + reason);
}

fs::path resolved(const std::string& path) {
    std::error_code error;
    fs::path target = fs::weakly_canonical(fs::absolute(pathOf(path)), error);
    return error ? pathOf(path) : target;
}

// Short, since the target's name may be as long as names can be.
fs::path temporaryBeside(const fs::path& target) {
    static std::atomic<unsigned> number = 0;
    return target.parent_path() /
           (".mvfreq-" + std::to_string(processNumber()) + "-" + std::to_string(number++) + ".tmp");
}

// The first name that `take` could have; none, with `errno`, when it fails. A file of a name is
// left over from a run of another machine on the same disk.
template <class Take>
fs::path freeBeside(const fs::path& target, Take take) {
    for (;;) {
        fs::path path = temporaryBeside(target);
        if (take(path)) return path;
        if (errno != EEXIST) return {};
    }
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : name_(path) {
    if (isStandard(path)) return;
    target_ = resolved(path);
    std::error_code error;
    const fs::file_status status = fs::status(target_, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) fail(path, "is not a regular file");
    open();
    if (fs::exists(status)) permit(stream_, status.permissions());
}

void OutputFile::open() {
    stream_ = makeNameless(target_.parent_path());
    if (stream_) return;
    temporary_ = freeBeside(target_, [&](const fs::path& path) {
        stream_ = makeBytes(path);
        return stream_ != nullptr;
    });
    if (!stream_) fail(name_, systemText(errno));
}

void OutputFile::giveName() {
    if (std::fflush(stream_) != 0) {
        error_ = errno;
        return;
    }
    temporary_ =
        freeBeside(target_, [&](const fs::path& path) { return nameBytes(stream_, path); });
    if (temporary_.empty()) error_ = errno;
}

OutputFile::~OutputFile() {
    if (stream_) std::fclose(stream_);
    std::error_code ignored;
    if (!temporary_.empty()) fs::remove(temporary_, ignored);
}

bool OutputFile::store(const void* bytes, std::size_t count) noexcept {
    if (error_ != 0) return false;
    if (stream_) {
        if (std::fwrite(bytes, 1, count, stream_) != count) error_ = errno != 0 ? errno : EIO;
        return error_ == 0;
    }
    try {
        bytes_.append(static_cast<const char*>(bytes), count);
    } catch (const std::exception&) {
        error_ = ENOMEM;
    }
    return error_ == 0;
}

void OutputFile::requireStored() const {
    if (error_ != 0) fail(name_, systemText(error_));
}

void OutputFile::finish() {
    if (stream_ && temporary_.empty() && error_ == 0) giveName();
    if (stream_ && std::fclose(std::exchange(stream_, nullptr)) != 0 && error_ == 0) {
        error_ = errno;
    }
    requireStored();
}

void OutputFile::publish() {
    if (isStandardOutput()) return printOut(bytes_);
    std::error_code error;
    fs::rename(temporary_, target_, error);
    if (error) fail(name_, error.message());
    temporary_.clear();
}

OutputFile& OutputFiles::add(const std::string& path) {
    const fs::path target = isStandard(path) ? fs::path() : resolved(path);
    for (const OutputFile& file : files_) {
        if (file.target() == target) {
            throw BadArgument(outputName(path) + ": two outputs have this name");
        }
    }
    return files_.emplace_back(path);
}

void OutputFiles::publish() {
    for (OutputFile& file : files_) file.finish();
    checkInterrupted();
    for (const bool standard : {true, false}) {
        for (OutputFile& file : files_) {
            if (file.isStandardOutput() == standard) file.publish();
        }
    }
}
