// What libpng keeps of a file, and its errors as exceptions.
#pragma once

#include <png.h>

#include <array>
#include <csetjmp>
#include <new>

#include "failure.h"

/// The text of libpng's last error.
using PngError = std::array<char, 256>;

struct PngReadState {
    PngReadState();
    ~PngReadState();
    PngReadState(const PngReadState&) = delete;
    PngReadState& operator=(const PngReadState&) = delete;

    PngError error{};
    png_structp png;
    png_infop info;
};

struct PngWriteState {
    PngWriteState();
    ~PngWriteState();
    PngWriteState(const PngWriteState&) = delete;
    PngWriteState& operator=(const PngWriteState&) = delete;

    PngError error{};
    png_structp png;
    png_infop info;
};

/// Calls steps(png, info) and throws a Failure with libpng's text when it fails. libpng reports
/// errors by longjmp: `steps` must not own anything that has a destructor.
template <class State, class Steps>
void guarded(State& state, Steps steps) {
    if (!state.info) throw std::bad_alloc();
    if (setjmp(png_jmpbuf(state.png))) throw Failure(state.error.data());
    steps(state.png, state.info);
}

/// The text entry by which the program knows its own pictures.
constexpr char kPngSoftware[] = "Software";
constexpr char kPngProgram[] = "mvfreq";
