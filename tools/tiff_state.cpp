// What libtiff keeps of a file, and its errors as exceptions.
#include "tiff_state.h"

#include <algorithm>
#include <cstdio>

#include "failure.h"
#include "input_bytes.h"

namespace {

InputBytes& fileOf(thandle_t handle) {
    return *static_cast<InputBytes*>(handle);
}

extern "C" tmsize_t readTiff(thandle_t handle, void* to, tmsize_t count) {
    const auto asked = static_cast<std::size_t>(count);
    const std::size_t all = fileOf(handle).readSome(to, asked);
    if (all < asked) fileOf(handle).noteEnd();
    return static_cast<tmsize_t>(all);
}

extern "C" tmsize_t writeTiff(thandle_t, void*, tmsize_t) {
    return 0;
}

extern "C" toff_t seekTiff(thandle_t handle, toff_t offset, int whence) {
    return fileOf(handle).seek(offset, whence);
}

extern "C" int closeTiff(thandle_t) {
    return 0;
}

extern "C" toff_t sizeOfTiff(thandle_t handle) {
    return fileOf(handle).size().value_or(0);
}

// The first error is the cause of the others.
extern "C" int keepTiffError(TIFF*, void* state, const char*, const char* format,
                             va_list arguments) {
    auto& error = static_cast<TiffState*>(state)->error;
    if (error[0] == '\0') std::vsnprintf(error.data(), error.size(), format, arguments);
    return 1;
}

extern "C" int ignoreTiffWarning(TIFF*, void*, const char*, const char*, va_list) {
    return 1;
}

// Tables of places and sizes are longer in memory than in the file, by this factor at most.
constexpr std::uint64_t kTableGrowth = 8, kLeastMemory = 16 << 20;

}  // namespace

TiffState::TiffState(InputBytes& file) {
    file.makeSeekable();
    const std::uint64_t memory = kLeastMemory + kTableGrowth * file.size().value_or(0);
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, static_cast<tmsize_t>(memory));
    TIFFOpenOptionsSetErrorHandlerExtR(options, keepTiffError, this);
    TIFFOpenOptionsSetWarningHandlerExtR(options, ignoreTiffWarning, this);
    // Tables are read when they are needed, after the picture's size is known.
    tiff_ = TIFFClientOpenExt("", "rDm", &file, readTiff, writeTiff, seekTiff, closeTiff,
                              sizeOfTiff, nullptr, nullptr, options);
    TIFFOpenOptionsFree(options);
    if (!tiff_) fail();
}

TiffState::~TiffState() {
    if (tiff_) TIFFClose(tiff_);
}

void TiffState::fail() const {
    throw Failure(error[0] == '\0' ? "The TIFF is broken" : error.data());
}
