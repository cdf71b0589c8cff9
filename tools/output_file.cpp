// Files that appear whole or not at all.
#include "output_file.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "attention.h"
#include "failure.h"

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const fs::path& path, const std::string& reason) {
    throw Failure(path.string() + ": " + reason);
}

fs::path resolved(const std::string& path) {
    std::error_code error;
    fs::path target = fs::weakly_canonical(fs::absolute(path), error);
    return error ? fs::path(path) : target;
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : target_(resolved(path)) {
    std::error_code ignored;
    const fs::file_status status = fs::status(target_, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status)) fail(path, "is not a regular file");

    temporary_ = target_;
    temporary_.concat(".").concat(std::to_string(getpid())).concat(".tmp");
    stream_ = std::fopen(temporary_.c_str(), "wbx");
    if (!stream_) fail(path, systemText(errno));
    if (fs::exists(status)) fs::permissions(temporary_, status.permissions(), ignored);
}

OutputFile::~OutputFile() {
    if (stream_) std::fclose(stream_);
    if (!temporary_.empty()) std::remove(temporary_.c_str());
}

void OutputFile::write(const std::string& bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), stream_);
}

void OutputFile::finish() {
    const bool stored = !std::ferror(stream_);
    const bool closed = std::fclose(std::exchange(stream_, nullptr)) == 0;
    if (!stored || !closed) fail(target_, "could not be written");
}

void OutputFile::publish() {
    std::error_code error;
    fs::rename(temporary_, target_, error);
    if (error) fail(target_, error.message());
    temporary_.clear();
}

OutputFile& OutputFiles::add(const std::string& path) {
    const fs::path target = resolved(path);
    for (const OutputFile& file : files_) {
        if (file.target() == target) throw BadArgument(path + ": two outputs have this name");
    }
    return files_.emplace_back(path);
}

void OutputFiles::publish() {
    for (OutputFile& file : files_) file.finish();
    checkInterrupted();
    for (OutputFile& file : files_) file.publish();
}
