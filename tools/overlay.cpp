// Marks on a picture.
#include "overlay.h"

#include <algorithm>
#include <limits>

namespace {

struct Box {
    long left, top, right, bottom;

    Box grown(long by) const { return {left - by, top - by, right + by, bottom + by}; }
};

// Sets what of the box is in the picture.
template <class T>
void fill(mvPelBuffer<T>& channel, const Box& box, T value) {
    const long left = std::max(box.left, 0L), right = std::min(box.right, channel.width());
    if (left >= right) return;
    for (long y = std::max(box.top, 0L); y < std::min(box.bottom, channel.height()); ++y) {
        T* row = channel.pointToRow(y);
        std::fill(row + left, row + right, value);
    }
}

// A frame of that thickness around the box.
template <class T>
void frame(mvPelBuffer<T>& channel, const Box& box, long thick, T value) {
    const Box outer = box.grown(thick);
    fill(channel, {outer.left, outer.top, outer.right, box.top}, value);
    fill(channel, {outer.left, box.bottom, outer.right, outer.bottom}, value);
    fill(channel, {outer.left, box.top, box.left, box.bottom}, value);
    fill(channel, {box.right, box.top, outer.right, box.bottom}, value);
}

// On large pictures, lines of one pel would be lost.
long lineOf(const mv_PelBuffer& picture) {
    return 1 + std::max(picture.width(), picture.height()) / 1000;
}

}  // namespace

template <class T>
PictureOf<T> withFrames(const PictureOf<T>& picture, const std::vector<Spot>& spots) {
    constexpr T kMost = std::numeric_limits<T>::max();
    const long line = lineOf(picture.first());
    PictureOf<T> marked;
    for (const mvPelBuffer<T>& channel : picture.channels) {
        const bool isBlue = marked.channels.size() == 2;
        mvPelBuffer<T> pels = mfPelClone(channel);
        for (const Spot& spot : spots) {
            const Box box{spot.left, spot.top, spot.left + spot.width, spot.top + spot.height};
            frame(pels, box.grown(2 * line), 3 * line, T(0));
            frame(pels, box.grown(3 * line), line, isBlue ? T(0) : kMost);
        }
        marked.channels.push_back(pels);
    }
    return marked;
}

template PictureOf<unsigned char> withFrames(const PictureOf<unsigned char>&,
                                             const std::vector<Spot>&);
template PictureOf<unsigned short> withFrames(const PictureOf<unsigned short>&,
                                              const std::vector<Spot>&);
