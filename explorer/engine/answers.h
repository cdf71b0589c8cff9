// What the page is given, as JavaScript's values.
#pragma once

#include <base/pel_buffer.h>

#include <emscripten/val.h>
#include <suggest/peaks.h>
#include <suggest/suggest.h>

#include <string>
#include <vector>

/// A picture as `levels`, itself and its halves to be looked at from near and far, each with
/// `width`, `height` and `pels`; and as `pels` where they have 16 bits.
emscripten::val shown(const mvPelBuffer<unsigned char>& picture);
emscripten::val shown(const mvPelBuffer<unsigned short>& picture);

/// The pels alone.
emscripten::val onePicture(const mvPelBuffer_const<unsigned char>& picture);

/// The numbers of all rows, in the page's memory.
emscripten::val numbersOf(const mvPelBuffer_const<double>& values);

emscripten::val bytesOf(const std::string& bytes);

emscripten::val shown(const mvSuggestions& suggestions);
emscripten::val shown(const std::vector<mvPeak>& peaks);
