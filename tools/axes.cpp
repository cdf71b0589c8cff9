// Axes around a picture of frequencies.
#include "axes.h"

#include <algorithm>
#include <iterator>
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

// Where ticks stand: at every so many thousandths of a cycle per pixel.
constexpr long kSteps[] = {1, 2, 5, 10, 20, 50, 100, 200, 500, 1000};
constexpr long kHighest = 500;

// "-0.45": so many thousandths.
std::string numberText(long thousandths) {
    if (thousandths == 0) return "0";
    std::string digits = std::to_string(1000 + std::abs(thousandths)).substr(1);
    digits.resize(digits.find_last_not_of('0') + 1);
    return (thousandths < 0 ? "-0." : "0.") + digits;
}

// One axis: so many pels of the picture, each drawn so many pels long.
struct Axis {
    long pels;
    double pelsPerCycle;
    long zoom;

    long length() const { return pels * zoom; }

    double distance(long thousandths) const {
        return static_cast<double>(thousandths * zoom) * pelsPerCycle / 1000;
    }

    // The middle of the pel that stands for a frequency.
    long position(long thousandths) const {
        return pels / 2 * zoom + zoom / 2 + static_cast<long>(distance(thousandths));
    }

    // The finest step of whole units that leaves `room` pels from one tick to the next; the
    // coarsest leaves only the zero.
    long step(double room, long unit = 1) const {
        for (const long at : kSteps) {
            if (at % unit == 0 && distance(at) >= room) return at;
        }
        return kSteps[std::size(kSteps) - 1];
    }

    // The finest step of which another one is a multiple.
    long stepWithin(long whole, double room) const {
        for (const long at : kSteps) {
            if (whole % at == 0 && distance(at) >= room) return at;
        }
        return whole;
    }

    // Calls draw(position, thousandths) for the ticks that lie on the axis.
    template <class Draw>
    void ticks(long step, Draw draw) const {
        for (long at = -kHighest / step * step; at <= kHighest; at += step) {
            if (position(at) >= 0 && position(at) <= length()) draw(position(at), at);
        }
    }
};

// The picture that is being drawn. All lengths follow the size of the letters.
class Plot {
  public:
    Plot(const mvPelBuffer_const<unsigned char>& plane, mvPair<double> pelsPerCycle)
        : Plot(plane, pelsPerCycle, longer(plane)) {}

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
    Plot(const mvPelBuffer_const<unsigned char>& plane, mvPair<double> pelsPerCycle, long side)
        : letter_(std::max(side / 512, 1l)),
          left_(46 * letter_),
          top_(6 * letter_),
          across_{plane.width(), pelsPerCycle.x, std::max(kLeastSide / side, 1l)},
          down_{plane.height(), pelsPerCycle.y, across_.zoom},
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
        const long step = numberedStep(across_);
        across_.ticks(fineStep(across_, step),
                      [&](long at, long) { tick(left_ + at, bottom, 1, 2 * letter_); });
        across_.ticks(step, [&](long at, long thousandths) {
            tick(left_ + at, bottom, 1, 4 * letter_);
            const std::string number = numberText(thousandths);
            drawText(number, left_ + at - textWidth(number, letter_) / 2, bottom + 6 * letter_);
        });
    }

    void drawDown() const {
        const long right = left_ - 1;
        const long step = down_.step(static_cast<double>(14 * letter_));
        down_.ticks(fineStep(down_, step),
                    [&](long at, long) { tick(right - 2 * letter_, top_ + at, 2 * letter_, 1); });
        down_.ticks(step, [&](long at, long thousandths) {
            tick(right - 4 * letter_, top_ + at, 4 * letter_, 1);
            const std::string number = numberText(thousandths);
            drawText(number, right - 6 * letter_ - textWidth(number, letter_),
                     top_ + at - 3 * letter_);
        });
    }

    // Ticks without numbers stand four letter pels apart at least.
    long fineStep(const Axis& axis, long step) const {
        return axis.stepWithin(step, static_cast<double>(4 * letter_));
    }

    // Coarse steps have shorter numbers, so that they may stand closer together.
    long numberedStep(const Axis& axis) const {
        const struct {
            const char* widest;
            long unit;
        } numbers[] = {{"-0.455", 1}, {"-0.45", 10}, {"-0.5", 100}};
        long finest = kSteps[std::size(kSteps) - 1];
        for (const auto& number : numbers) {
            const long room = textWidth(number.widest, letter_) + 6 * letter_;
            finest = std::min(finest, axis.step(static_cast<double>(room), number.unit));
        }
        return finest;
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

mvPelBuffer<unsigned char> withAxes(const mvPelBuffer_const<unsigned char>& plane,
                                    mvPair<double> pelsPerCycle) {
    return Plot(plane, pelsPerCycle).draw(plane);
}
