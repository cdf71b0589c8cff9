// The objects that operations work on.
#pragma once

#include <filt/fft.h>
#include <filt/freqfilt.h>

#include <string>

namespace faults {

using Byte = unsigned char;
using Word = unsigned short;

/// The size of the images and whether they have an offset.
struct Shape {
    long width, height;
    bool offset;
};

/// Three filters of one class: for the operands' plane, for another one, without response.
template <class F>
struct Filters {
    F built, other, none;
};

/// Everything that an operation may read or write. `spectrum` and the built filters have one size;
/// `other` and the other filters have another; bound outputs are filled with guards. `banded` holds
/// data outside its band of rows, `bandAlone` does not.
struct Operands {
    explicit Operands(const Shape& shape);

    mvPelBuffer<Byte> bytes;
    mvPelBuffer<Word> words;
    mvPelBuffer<double> doubles;

    mvFrequencyBuffer spectrum, other, spent, empty, banded, bandAlone;

    mvPelBuffer<Byte> newBytes, newCodes, boundBytes, boundCodes;
    mvPelBuffer<Word> newWords, boundWords;
    mvPelBuffer<double> newFirst, newSecond, boundFirst, boundSecond;

    Filters<mvFrequencyFilterBandPass> bandPass;
    Filters<mvFrequencyFilterBandReject> bandReject;
    Filters<mvFrequencyFilterGabor> gabor;
    Filters<mvFrequencyFilterGaborReject> gaborReject;
    Filters<mvFrequencyFilterImage> image;

    mvExceptionWithString error{"A message that is too long to be kept within a string object."};
    std::string text = "A text that is too long to be kept within a string object.";
    std::string written;  // what storing leaves behind
};

/// Makes copies of the operands like the operands: each image gets pels of its own, where
/// operations have made views, filters without response forget their parameters, watchers are taken
/// away.
void separate(Operands& operands);

/// Calls visit(name, object) for each operand.
template <class O, class Visit>
void visitOperands(O& o, Visit visit) {
    visit("bytes", o.bytes);
    visit("words", o.words);
    visit("doubles", o.doubles);
    visit("spectrum", o.spectrum);
    visit("other", o.other);
    visit("spent", o.spent);
    visit("empty", o.empty);
    visit("banded", o.banded);
    visit("bandAlone", o.bandAlone);
    visit("newBytes", o.newBytes);
    visit("newCodes", o.newCodes);
    visit("newWords", o.newWords);
    visit("newFirst", o.newFirst);
    visit("newSecond", o.newSecond);
    visit("boundBytes", o.boundBytes);
    visit("boundCodes", o.boundCodes);
    visit("boundWords", o.boundWords);
    visit("boundFirst", o.boundFirst);
    visit("boundSecond", o.boundSecond);
    const auto visitFilters = [&](const std::string& name, auto& filters) {
        visit(name + ".built", filters.built);
        visit(name + ".other", filters.other);
        visit(name + ".none", filters.none);
    };
    visitFilters("bandPass", o.bandPass);
    visitFilters("bandReject", o.bandReject);
    visitFilters("gabor", o.gabor);
    visitFilters("gaborReject", o.gaborReject);
    visitFilters("image", o.image);
    visit("error", o.error);
    visit("text", o.text);
    visit("written", o.written);
}

/// A filter for planes of that size.
template <class F>
F makeFilter(mvPair<long> size) {
    if constexpr (std::is_base_of_v<mvRingFilter, F>) {
        return F(0.05, 0.02, 0.2, size, 1);
    } else if constexpr (std::is_base_of_v<mvLobeFilter, F>) {
        return F({0.05, 0.04}, {0.02, 0.01}, mvRadian(0.5), 0.2, size, 1);
    } else {
        return F(mvFrequencyBuffer(size.x, size.y));
    }
}

}  // namespace faults
