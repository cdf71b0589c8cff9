// The bytes of a file that a decoder reads.
#include "input_bytes.h"

#include <array>
#include <cerrno>
#include <filesystem>

#include "failure.h"
#include "standard_names.h"
#include "system.h"

namespace {

constexpr std::size_t kHead = 8;
constexpr std::size_t kMostKept = std::size_t{2} << 30;

int leaveOpen(std::FILE*) {
    return 0;
}

}  // namespace

InputBytes::File InputBytes::open(const std::string& path) {
    if (isStandard(path)) return {stdin, &leaveOpen};
    File file(openBytes(path), &std::fclose);
    const int error = errno;
    std::error_code ignored;
    if (std::filesystem::is_directory(pathOf(path), ignored)) throw Failure(systemText(EISDIR));
    if (!file) throw Failure(systemText(error));
    return file;
}

InputBytes::InputBytes(const std::string& path) : file_(open(path)), head_(kHead, '\0') {
    head_.resize(std::fread(head_.data(), 1, kHead, file_.get()));
    pending_ = head_;
    isShort_ = head_.empty();
}

// From the file, or from what is kept of it.
std::size_t InputBytes::pull(char* to, std::size_t count) noexcept {
    if (!isKept_) return std::fread(to, 1, count, file_.get());
    const std::size_t copied = place_ < kept_.size() ? kept_.copy(to, count, place_) : 0;
    place_ += copied;
    return copied;
}

std::size_t InputBytes::readSome(void* to, std::size_t count) noexcept {
    auto* bytes = static_cast<char*>(to);
    const std::size_t first = pending_.copy(bytes, count);
    pending_.remove_prefix(first);
    const std::size_t all = first + pull(bytes + first, count - first);
    isShort_ = isShort_ || (all == 0 && count > 0);
    if (std::ferror(file_.get()) != 0 && error_ == 0) error_ = errno;
    return all;
}

bool InputBytes::read(void* to, std::size_t count) noexcept {
    if (readSome(to, count) == count) return true;
    isShort_ = true;
    return false;
}

std::uint64_t InputBytes::seek(std::uint64_t offset, int whence) noexcept {
    pending_ = {};
    if (!isKept_) return seekBytes(file_.get(), offset, whence);
    if (whence == SEEK_CUR) offset += place_;
    if (whence == SEEK_END) offset += kept_.size();
    place_ = offset;
    return place_;
}

void InputBytes::makeSeekable() {
    if (!size()) {
        kept_ = head_;
        std::array<char, 65536> bytes{};
        while (const std::size_t count = pull(bytes.data(), bytes.size())) {
            kept_.append(bytes.data(), count);
            if (kept_.size() > kMostKept) throw Failure("More than 2 GiB come through the pipe");
        }
        isKept_ = true;
    }
    seek(0, SEEK_SET);
}

std::optional<std::uint64_t> InputBytes::size() const {
    if (isKept_) return kept_.size();
    return sizeOfBytes(file_.get());
}

std::string InputBytes::complaint() const {
    if (error_ != 0) return systemText(error_);
    return isShort_ ? "The file ends early" : "";
}
