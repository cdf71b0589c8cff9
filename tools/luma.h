// Colour as grey.
#pragma once

/// 0.299 red + 0.587 green + 0.114 blue on the stored values, rounded.
template <class T>
T luma(const T* rgb) {
    return static_cast<T>((299ul * rgb[0] + 587ul * rgb[1] + 114ul * rgb[2] + 500) / 1000);
}
