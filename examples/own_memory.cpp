// Filters a frame where it lies: own_memory frame.png defects.png
//
// A pel buffer is a view: the frame stays in the camera's memory, and the result is laid into
// memory of the program's own.
#include <filt/freqfilt.h>

#include <cstring>
#include <iostream>
#include <vector>

#include "picture.h"
#include "program.h"

namespace {

/// Replaces the pels, their rows `stride` pels apart, by what is wrong with them.
void showDefects(unsigned char* pels, long width, long height, long stride) {
    mvPelBuffer<unsigned char> frame(pels, width, height, stride);  // a view, nothing is copied
    // Sigma and frequency are in cycles per pixel.
    const mvFrequencyFilterBandPass ring(
        {.sigma = 0.012, .frequency = 0.03, .size = {1024, 1024}, .dcRadius = 1});
    mfFilterImage(frame, ring, frame, {.rescale = true});  // bright on black, in the frame itself
}

void run(char** argv) {
    const Image picture = readPicture(argv[1]);

    // What a camera delivers: rows that start at multiples of 1024 bytes.
    const long width = picture.width(), height = picture.height(), stride = 1024;
    std::vector<unsigned char> memory(static_cast<std::size_t>(stride * height));
    for (long y = 0; y < height; ++y) {
        std::memcpy(memory.data() + stride * y, picture.pointToRow(y),
                    static_cast<std::size_t>(width));
    }

    // A region of interest of any size.
    const long left = 64, top = 128;
    showDefects(memory.data() + stride * top + left, 500, 270, stride);

    const Image frame(memory.data(), width, height, stride);
    writePicture(argv[2], frame);
    std::cout << "on a defect: " << int{frame.pel(452, 318)}
              << ", on good cloth: " << int{frame.pel(320, 260)} << '\n';
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "frame.png defects.png", run);
}
