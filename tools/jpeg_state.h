// What libjpeg keeps of a file, and its errors as exceptions.
#pragma once

// libjpeg's header needs those before it.
// clang-format off
#include <cstddef>
#include <cstdio>
#include <jpeglib.h>
// clang-format on

#include <array>
#include <csetjmp>

#include "failure.h"

class InputBytes;

/// A file that is being decoded. What libjpeg warns of is an error, where pels would be wrong.
class JpegState {
  public:
    explicit JpegState(InputBytes& file);
    ~JpegState();
    JpegState(const JpegState&) = delete;
    JpegState& operator=(const JpegState&) = delete;

    jpeg_decompress_struct jpeg{};
    std::jmp_buf escape{};
    std::array<char, JMSG_LENGTH_MAX> error{};

    /// Ends the steps with that text.
    [[noreturn]] void fail(const char* text);

    /// The next bytes of the file, or the end of the steps.
    void refill();

  private:
    jpeg_error_mgr errors_{};
    jpeg_source_mgr source_{};
    jpeg_progress_mgr progress_{};
    InputBytes& file_;
    std::array<unsigned char, 4096> bytes_{};
};

/// Calls steps(jpeg) and throws a Failure with libjpeg's text when it fails. libjpeg reports errors
/// by longjmp: `steps` must not own anything that has a destructor.
template <class Steps>
void guarded(JpegState& state, Steps steps) {
    if (setjmp(state.escape)) throw Failure(state.error.data());
    steps(&state.jpeg);
}
