// Filters a web that a line-scan camera delivers strip by strip: line_scan_web web.png result.png
//
// The library keeps nothing between calls. What has to be kept, the rows that the next result still
// needs, is the program's; then the pieces join to what one call gives for the whole web.
#include <filt/freqfilt.h>

#include <algorithm>
#include <iostream>

#include "picture.h"
#include "program.h"

namespace {

using Result = mvPelBuffer<double>;

constexpr long kPlane = 256, kStrip = 100;

/// The last rows of a web, as many as the filter's plane has.
class Web {
  public:
    Web(const mvFrequencyFilter& filter, long width)
        : filter_(filter),
          rows_(width, kPlane),
          margin_(std::min(mfFilterReach(filter).y, kPlane / 4)),
          filled_(margin_) {}

    /// Takes the next row of the web. When it completes rows of the result, puts them into `result`
    /// from row `done` on, and counts them there.
    void take(const unsigned char* row, Result& result, long& done) {
        std::copy_n(row, rows_.width(), rows_.pointToRow(filled_++));
        if (filled_ < kPlane) return;
        if (done == 0) mirrorTheBeginning();
        Result piece;
        mfFilterImage(rows_, filter_, piece, {.margin = {-1, 0}});  // the margin is in the rows
        piece.offset(0, done - margin_);
        const long height = kPlane - 2 * margin_;
        Result place = result.window(0, done, rows_.width(), height);
        mfPelCopy(piece, place);
        done += height;
        keepTheMargins();
    }

  private:
    void copyRow(long from, long to) {
        std::copy_n(rows_.pointToRow(from), rows_.width(), rows_.pointToRow(to));
    }
    /// Above the first row of the web stands its mirror image.
    void mirrorTheBeginning() {
        for (long y = 0; y < margin_; ++y) copyRow(margin_ + y, margin_ - 1 - y);
    }
    void keepTheMargins() {
        filled_ = 2 * margin_;
        for (long y = 0; y < filled_; ++y) copyRow(kPlane - filled_ + y, y);
    }

    const mvFrequencyFilter& filter_;
    Image rows_;
    long margin_;
    long filled_;
};

bool sameRows(const Result& a, const Result& b, long rows) {
    for (long y = 0; y < rows; ++y) {
        if (!std::equal(a.pointToRow(y), a.pointToRow(y) + a.width(), b.pointToRow(y))) {
            return false;
        }
    }
    return true;
}

void run(char** argv) {
    const Image picture = readPicture(argv[1]);
    const mvFrequencyFilterBandPass ring(
        {.sigma = 0.012, .frequency = 0.03, .size = {512, kPlane}, .dcRadius = 1});
    Web web(ring, picture.width());
    Result result(picture.width(), picture.height());
    long done = 0;
    for (long top = 0; top < picture.height(); top += kStrip) {
        const long bottom = std::min(top + kStrip, picture.height());
        for (long y = top; y < bottom; ++y) web.take(picture.pointToRow(y), result, done);
        std::cout << bottom << " rows came, " << done << " are done\n";
    }
    // No one knows how bright a web will get: 20 grey levels are white.
    const Result joined = result.window(0, 0, result.width(), done);
    writePicture(argv[2], mfFrequencyMapImage(joined, mvFrequencyDefs::eMapRange, 0.0, 20.0));

    Result whole;
    mfFilterImage(picture, ring, whole);
    std::cout << "in pieces and in one call: "
              << (sameRows(joined, whole, done) ? "the same" : "DIFFERENT") << " bits\n";
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "web.png result.png", run);
}
