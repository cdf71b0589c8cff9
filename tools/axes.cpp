// Axes around a picture of frequencies.
#include "axes.h"

#include <algorithm>
#include <string>

#include "tiny_font.h"

namespace {

constexpr unsigned char kWhite = 255, kBlack = 0;
constexpr long kLeastSide = 256;
constexpr char kUnit[] = "cycles per pixel";

using Canvas = mvPelBuffer<unsigned char>;

void fill(const Canvas& canvas, long x, long y, long width, long height, unsigned char value) {
    Canvas part = canvas.window(x, y, width, height);
    mfPelSet_U8(part, value);
}

// "-0.4": a frequency that is given in tenths of a cycle per pixel.
std::string numberText(long tenths) {
    if (tenths == 0) return "0";
    return (tenths < 0 ? "-0." : "0.") + std::to_string(std::abs(tenths));
}

// One axis: so many bins, each so many pels long.
struct Axis {
    long bins;
    long zoom;

    long length() const { return bins * zoom; }

    // The middle of the bin that stands for a frequency.
    long position(long tenths) const { return bins / 2 * zoom + zoom / 2 + tenths * length() / 10; }

    // The tenths from one number to the next, when a number needs `room` pels; beyond 5 there is
    // only room for the zero.
    long step(long room) const {
        for (const long tenths : {1, 2, 5}) {
            if (tenths * length() / 10 >= room) return tenths;
        }
        return 10;
    }

    // Calls draw(position, tenths) for the tenths that lie on the axis.
    template <class Draw>
    void ticks(long step, Draw draw) const {
        for (long tenths = -5; tenths <= 5; ++tenths) {
            if (tenths % step == 0 && position(tenths) >= 0 && position(tenths) <= length()) {
                draw(position(tenths), tenths);
            }
        }
    }
};

// The picture that is being drawn. All lengths follow the size of the letters.
class Plot {
  public:
    explicit Plot(const mvPelBuffer_const<unsigned char>& plane) : Plot(plane, longer(plane)) {}

    Canvas draw(const mvPelBuffer_const<unsigned char>& plane) const {
        fill(canvas_, 0, 0, canvas_.width(), canvas_.height(), kWhite);
        fill(canvas_, left_ - 1, top_ - 1, across_.length() + 2, down_.length() + 2, kBlack);
        drawPlane(plane);
        drawAcross();
        drawDown();
        drawText(kUnit, (canvas_.width() - textWidth(kUnit, letter_)) / 2,
                 canvas_.height() - 9 * letter_);
        return canvas_;
    }

  private:
    Plot(const mvPelBuffer_const<unsigned char>& plane, long side)
        : letter_(std::max(side / 512, 1l)),
          left_(34 * letter_),
          top_(6 * letter_),
          across_{plane.width(), std::max(kLeastSide / side, 1l)},
          down_{plane.height(), across_.zoom},
          canvas_(std::max(left_ + across_.length() + 16 * letter_,
                           textWidth(kUnit, letter_) + 4 * letter_),
                  top_ + std::max(down_.length(), 4 * letter_) + 28 * letter_) {}

    static long longer(const mv_PelBuffer& plane) {
        return std::max(plane.width(), plane.height());
    }

    void drawPlane(const mvPelBuffer_const<unsigned char>& plane) const {
        for (long y = 0; y < down_.length(); ++y) {
            unsigned char* out = canvas_.pointToRow(top_ + y) + left_;
            const unsigned char* row = plane.pointToRow(y / down_.zoom);
            for (long x = 0; x < across_.length(); ++x) out[x] = row[x / across_.zoom];
        }
    }

    void drawAcross() const {
        const long bottom = top_ + down_.length() + 1;
        across_.ticks(1, [&](long at, long) { tick(left_ + at, bottom, 1, 2 * letter_); });
        across_.ticks(across_.step(30 * letter_), [&](long at, long tenths) {
            tick(left_ + at, bottom, 1, 4 * letter_);
            const std::string number = numberText(tenths);
            drawText(number, left_ + at - textWidth(number, letter_) / 2, bottom + 6 * letter_);
        });
    }

    void drawDown() const {
        const long right = left_ - 1;
        down_.ticks(1,
                    [&](long at, long) { tick(right - 2 * letter_, top_ + at, 2 * letter_, 1); });
        down_.ticks(down_.step(10 * letter_), [&](long at, long tenths) {
            tick(right - 4 * letter_, top_ + at, 4 * letter_, 1);
            const std::string number = numberText(tenths);
            drawText(number, right - 6 * letter_ - textWidth(number, letter_),
                     top_ + at - 3 * letter_);
        });
    }

    void tick(long x, long y, long width, long height) const {
        fill(canvas_, x, y, width, height, kBlack);
    }

    void drawText(const std::string& text, long x, long y) const {
        writeText(canvas_, text, x, y, letter_);
    }

    long letter_, left_, top_;
    Axis across_, down_;
    Canvas canvas_;
};

}  // namespace

mvPelBuffer<unsigned char> withAxes(const mvPelBuffer_const<unsigned char>& plane) {
    return Plot(plane).draw(plane);
}
