// Decoded samples on their way into a picture.
#include "picture_rows.h"

#include <cstddef>
#include <utility>

#include "attention.h"
#include "luma.h"

namespace {

// Where the pels of a stored picture stand when it is shown.
class Orientation {
  public:
    explicit Orientation(const PictureHeader& header)
        : isTurned_(header.isTurned()),
          fromRight_(header.orientation % 4 == 2 || header.orientation % 4 == 3),
          fromBottom_(header.orientation == 3 || header.orientation == 4 ||
                      header.orientation >= 7),
          width_(isTurned_ ? header.height : header.width),
          height_(isTurned_ ? header.width : header.height) {}

    long width() const { return width_; }
    long height() const { return height_; }

    template <class T>
    T* place(const mvPelBuffer<T>& pels, long x, long y) const {
        if (isTurned_) std::swap(x, y);
        return pels.pointToRow(fromBottom_ ? height_ - 1 - y : y) +
               (fromRight_ ? width_ - 1 - x : x);
    }

    // From a pel of a stored row to the next one.
    std::ptrdiff_t step(const mv_PelBuffer& pels) const {
        if (isTurned_) return fromBottom_ ? -pels.rowUpdate() : pels.rowUpdate();
        return fromRight_ ? -1 : 1;
    }

  private:
    bool isTurned_, fromRight_, fromBottom_;
    long width_, height_;
};

template <class T>
class Collector : public PictureRows {
  public:
    Collector(const PictureHeader& header, Channels channels)
        : orientation_(header), toGrey_(header.isColour && channels == Channels::grey) {
        for (int i = 0; i < (header.isColour && !toGrey_ ? 3 : 1); ++i) {
            picture.channels.emplace_back(orientation_.width(), orientation_.height());
        }
    }

    void put(long x, long y, long count, const void* samples, long step) override {
        checkInterrupted();
        const T* from = static_cast<const T*>(samples);
        if (toGrey_) return place(picture.first(), x, y, count, from, step, luma<T>);
        for (const mvPelBuffer<T>& channel : picture.channels) {
            place(channel, x, y, count, from++, step, [](const T* sample) { return *sample; });
        }
    }

    PictureOf<T> picture;

  private:
    template <class Pel>
    void place(const mvPelBuffer<T>& channel, long x, long y, long count, const T* from, long step,
               Pel pel) const {
        T* to = orientation_.place(channel, x, y);
        const std::ptrdiff_t next = orientation_.step(channel);
        for (long i = 0; i < count; ++i) to[i * next] = pel(from + i * step);
    }

    const Orientation orientation_;
    const bool toGrey_;
};

template <class T>
PictureOf<T> collect(PictureReader& reader, Channels channels) {
    const PictureHeader header = reader.header();
    Collector<T> rows(header, channels);
    beginStage("reading", header.height);
    reader.read(rows);
    return std::move(rows.picture);
}

}  // namespace

Picture collectPicture(PictureReader& reader, Channels channels) {
    if (reader.header().isWide()) return collect<unsigned short>(reader, channels);
    return collect<unsigned char>(reader, channels);
}
