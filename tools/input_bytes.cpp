// The bytes of a file that a decoder reads.
#include "input_bytes.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "failure.h"
#include "standard_names.h"

namespace {

constexpr std::size_t kHead = 8;

int leaveOpen(std::FILE*) {
    return 0;
}

}  // namespace

InputBytes::File InputBytes::open(const std::string& path) {
    if (isStandard(path)) return {stdin, &leaveOpen};
    File file(std::fopen(path.c_str(), "rb"), &std::fclose);
    if (!file) throw Failure(systemText(errno));
    struct stat status {};
    if (fstat(fileno(file.get()), &status) == 0 && S_ISDIR(status.st_mode)) {
        throw Failure(systemText(EISDIR));
    }
    return file;
}

InputBytes::InputBytes(const std::string& path) : file_(open(path)), head_(kHead, '\0') {
    head_.resize(std::fread(head_.data(), 1, kHead, file_.get()));
    pending_ = head_;
    isShort_ = head_.empty();
}

std::size_t InputBytes::readSome(void* to, std::size_t count) noexcept {
    const std::size_t first = pending_.copy(static_cast<char*>(to), count);
    pending_.remove_prefix(first);
    const std::size_t rest =
        std::fread(static_cast<char*>(to) + first, 1, count - first, file_.get());
    isShort_ = isShort_ || first + rest < count;
    if (std::ferror(file_.get()) != 0 && error_ == 0) error_ = errno;
    return first + rest;
}

std::optional<std::uint64_t> InputBytes::size() const {
    struct stat status {};
    const bool isFile = fstat(fileno(file_.get()), &status) == 0 && S_ISREG(status.st_mode);
    if (!isFile) return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size);
}

std::string InputBytes::complaint() const {
    if (error_ != 0) return systemText(error_);
    return isShort_ ? "The file ends early" : "";
}
