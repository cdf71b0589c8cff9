// What libpng keeps of a file, and its errors as exceptions.
#pragma once

#include <png.h>

#include <array>
#include <csetjmp>
#include <new>

#include "failure.h"

/// The text of libpng's last error.
using PngError = std::array<char, 256>;

/// What reading and writing share; each makes and destroys it in its own way.
struct PngState {
    PngState() = default;
    PngState(const PngState&) = delete;
    PngState& operator=(const PngState&) = delete;

    PngError error{};
    png_structp png{};
    png_infop info{};

  protected:
    ~PngState() = default;
};

struct PngReadState : PngState {
    PngReadState();
    ~PngReadState();
};

struct PngWriteState : PngState {
    PngWriteState();
    ~PngWriteState();
};

/// Calls steps(png, info) and throws a Failure with libpng's text when it fails. libpng reports
/// errors by longjmp: `steps` must not own anything that has a destructor.
template <class Steps>
void guarded(PngState& state, Steps steps) {
    if (!state.info) throw std::bad_alloc();
    if (setjmp(png_jmpbuf(state.png))) throw Failure(state.error.data());
    steps(state.png, state.info);
}

/// The text entry by which the program knows its own pictures.
constexpr char kPngSoftware[] = "Software";
constexpr char kPngProgram[] = "mvfreq";
