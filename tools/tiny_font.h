// Letters of five by nine pels.
#pragma once

#include <base/pel_buffer.h>

#include <string_view>

/// The width of a text in pels, when every pel of a letter is `scale` pels wide.
constexpr long textWidth(std::string_view text, long scale) {
    return (6 * static_cast<long>(text.size()) - 1) * scale;
}

/// Draws the text in black with its upper left pel at (x, y). The font has what axes need: digits,
/// point, minus, and the letters of "cycles per pixel" and "radius, grey levels"; others are
/// blanks. The canvas must have room.
void writeText(const mvPelBuffer<unsigned char>& canvas, std::string_view text, long x, long y,
               long scale);
