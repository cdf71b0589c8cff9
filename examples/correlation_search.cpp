// Finds a mark on a board: correlation_search board.png mark.png scores.png
//
// The product with the conjugate spectrum compares the mark with every place of the board at once.
#include <filt/fft.h>

#include <iostream>

#include "picture.h"
#include "program.h"

namespace {

/// The mark less its mean, so that bright places get no score for being bright, in the upper left
/// corner of a level image of the given size.
mvPelBuffer<double> levelled(const Image& mark, long width, long height) {
    double sum = 0.0;
    for (long y = 0; y < mark.height(); ++y) {
        for (long x = 0; x < mark.width(); ++x) sum += mark.pel(x, y);
    }
    const double mean = sum / static_cast<double>(mark.width() * mark.height());
    mvPelBuffer<double> pattern(width, height);
    for (long y = 0; y < mark.height(); ++y) {
        for (long x = 0; x < mark.width(); ++x) pattern.pointToRow(y)[x] = mark.pel(x, y) - mean;
    }
    return pattern;
}

/// How well the mark fits when its upper left corner lies on a pel.
mvPelBuffer<double> scores(const Image& board, const Image& mark) {
    mvFrequencyBuffer spectrum, pattern;
    mfForwardFFT(board, spectrum);
    mfForwardFFT(levelled(mark, board.width(), board.height()), pattern);
    mfFrequencyConjugate(pattern);
    mfFrequencyMultiply(pattern, spectrum);  // spectrum = pattern times spectrum

    mvPelBuffer<double> real, imaginary;  // the imaginary part is rounding noise
    mfInverseFFT(spectrum, real, imaginary, true);
    return real;
}

mvPair<long> highest(const mvPelBuffer<double>& image) {
    mvPair<long> best;
    for (long y = 0; y < image.height(); ++y) {
        for (long x = 0; x < image.width(); ++x) {
            if (image.pel(x, y) > image.pel(best.x, best.y)) best = {x, y};
        }
    }
    return best;
}

void run(char** argv) {
    const Image board = readPicture(argv[1]), mark = readPicture(argv[2]);
    const mvPelBuffer<double> score = scores(board, mark);
    writePicture(argv[3], mfFrequencyMapImage(score, mvFrequencyDefs::eMapRange, 0.0,
                                              score.pel(highest(score).x, highest(score).y)));

    // Best place first; each is blotted out before the next is looked for.
    const mvPair<long> first = highest(score);
    const double best = score.pel(first.x, first.y);
    for (mvPair<long> at = first; score.pel(at.x, at.y) > 0.6 * best; at = highest(score)) {
        std::cout << "mark at " << at.x << ' ' << at.y << ", score "
                  << static_cast<int>(100.0 * score.pel(at.x, at.y) / best) << '\n';
        mvPelBuffer<double> blot(mark.width(), mark.height());
        blot.offset(at.x - mark.width() / 2, at.y - mark.height() / 2);
        mvPelBuffer<double> target(score);  // a view of the same pels
        mfPelCopy(blot, target);            // where both overlap
    }
}

}  // namespace

int main(int argc, char** argv) {
    return runExample(argc, argv, "board.png mark.png scores.png", run);
}
