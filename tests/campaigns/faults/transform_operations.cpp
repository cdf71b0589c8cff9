// Forward and inverse transforms.
#include "campaigns/faults/operations.h"
#include "support/buffer_probe.h"
#include "support/thrown.h"

namespace faults {

namespace {

// The magnitudes of one pel type, into a new and a bound image. An output that is not bound is the
// target itself, and is bound to a new image before the last poll; a bound one is written at last.
template <class T>
void addMagnitudes(std::vector<Operation>& all, const std::string& pels,
                   mvPelBuffer<T> Operands::*fresh, mvPelBuffer<T> Operands::*bound,
                   const std::string& freshName) {
    const auto add = [&](const std::string& name, auto call, std::set<std::string> mayChange) {
        all.push_back({"inverse to " + pels + name, call, std::move(mayChange)});
    };
    add("", [=](Operands& o) { mfInverseFFT<T>(o.spectrum, o.*fresh, false, false); }, {freshName});
    add(", rescaled", [=](Operands& o) { mfInverseFFT<T>(o.spectrum, o.*fresh, true); },
        {freshName});
    add(", bound", [=](Operands& o) { mfInverseFFT<T>(o.spectrum, o.*bound, false, false); }, {});
    add(", in place", [=](Operands& o) { mfInverseFFT<T>(o.spectrum, o.*fresh, false, true); },
        {freshName, "spectrum"});
    add(", spent", [=](Operands& o) { mfInverseFFT<T>(o.spent, o.*fresh, false, true); },
        {freshName});
    add(" with angles",
        [=](Operands& o) { mfInverseFFTAngle<T>(o.spectrum, o.*fresh, o.newSecond, false, false); },
        {freshName, "newSecond"});
    add(" with angles, bound",
        [=](Operands& o) {
            mfInverseFFTAngle<T>(o.spectrum, o.*bound, o.boundSecond, false, false);
        },
        {"boundSecond"});
    add(" with quadrants",
        [=](Operands& o) {
            mfInverseFFTQuadrant<T>(o.spectrum, o.*fresh, o.newCodes, false, false);
        },
        {freshName, "newCodes"});
    add(" with quadrants, bound",
        [=](Operands& o) {
            mfInverseFFTQuadrant<T>(o.spectrum, o.*bound, o.boundCodes, false, false);
        },
        {"boundCodes"});
}

// A square plane whose rows outside a narrow band are not empty: some of them must change places.
mvFrequencyBuffer banded() {
    mvFrequencyBuffer buffer(16, 16);
    for (long y = 0; y < 16; ++y) buffer.put(y, y, {1.0, 2.0}, false);
    support::BufferProbe::maskFrequencyBuffer(buffer, true, 8, 9);
    return buffer;
}

// The same band, and nothing outside of it.
mvFrequencyBuffer bandAlone() {
    mvFrequencyBuffer buffer(16, 16);
    buffer.put(3, 0, {1.0, 2.0}, false);
    support::BufferProbe::maskFrequencyBuffer(buffer, true, 8, 9);
    return buffer;
}

void addBanded(std::vector<Operation>& all) {
    for (const auto make : {banded, bandAlone}) {
        const std::string name = make == banded ? "band of rows among others" : "band of rows";
        all.push_back({name + " to a buffer",
                       [=](Operands& o) { mfInverseFFT(make(), o.other); },
                       {"other"}});
        for (const bool rescale : {false, true}) {
            all.push_back({name + (rescale ? " to bytes, rescaled" : " to bytes"),
                           [=](Operands& o) { mfInverseFFT<Byte>(make(), o.newBytes, rescale); },
                           {"newBytes"}});
        }
        all.push_back({name + " in place",
                       [=](Operands& o) {
                           mvFrequencyBuffer buffer = make();
                           mfInverseFFT(buffer, o.newFirst, o.newSecond, true);
                       },
                       {"newFirst", "newSecond"}});
    }
}

void addForward(std::vector<Operation>& all) {
    const std::vector<Operation> rows = {
        {"forward of bytes", [](Operands& o) { mfForwardFFT<Byte>(o.bytes, o.other); }, {"other"}},
        {"forward of words", [](Operands& o) { mfForwardFFT<Word>(o.words, o.other); }, {"other"}},
        {"forward of doubles",
         [](Operands& o) { mfForwardFFT<double>(o.doubles, o.empty); },
         {"empty"}},
        {"forward of two images of bytes",
         [](Operands& o) { mfForwardFFT<Byte>(o.bytes, o.bytes, o.other); },
         {"other"}},
        {"forward of two images of words",
         [](Operands& o) { mfForwardFFT<Word>(o.words, o.words, o.other); },
         {"other"}},
        {"forward of two images of doubles",
         [](Operands& o) { mfForwardFFT<double>(o.doubles, o.doubles, o.empty); },
         {"empty"}},
        {"forward of a buffer", [](Operands& o) { mfForwardFFT(o.spectrum, o.other); }, {"other"}},
        {"forward of a buffer in place",
         [](Operands& o) { mfForwardFFT(o.spectrum, o.spectrum); },
         {"spectrum"}},
        {"forward of an unbound image",
         [](Operands& o) { mfForwardFFT<Byte>(o.newBytes, o.other); },
         {},
         support::kUnbound},
        {"forward of no data",
         [](Operands& o) { mfForwardFFT(o.empty, o.other); },
         {},
         support::kNoData},
    };
    all.insert(all.end(), rows.begin(), rows.end());
}

void addOtherInverses(std::vector<Operation>& all) {
    const std::vector<Operation> rows = {
        {"inverse to a buffer", [](Operands& o) { mfInverseFFT(o.spectrum, o.other); }, {"other"}},
        {"inverse to a buffer, in place",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.other, true); },
         {"other", "spectrum"}},
        {"inverse to the buffer itself",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.spectrum, true); },
         {"spectrum"}},
        {"inverse of a spent buffer",
         [](Operands& o) { mfInverseFFT(o.spent, o.other, false); },
         {"other"}},
        {"inverse to real and imaginary",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.newFirst, o.newSecond); },
         {"newFirst", "newSecond"}},
        {"inverse to real and imaginary, bound",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.boundFirst, o.boundSecond, true); },
         {"boundFirst", "boundSecond", "spectrum"}},
        {"inverse of no data",
         [](Operands& o) { mfInverseFFT<Byte>(o.empty, o.newBytes, false, true); },
         {},
         support::kNoData},
        {"angles", [](Operands& o) { mf_ComputeAngleImage(o.spectrum, o.newFirst); }, {"newFirst"}},
        {"angles, bound", [](Operands& o) { mf_ComputeAngleImage(o.spectrum, o.boundFirst); }},
        {"quadrants",
         [](Operands& o) { mf_ComputeQuadrantImage(o.spectrum, o.newCodes); },
         {"newCodes"}},
        {"quadrants, bound",
         [](Operands& o) { mf_ComputeQuadrantImage(o.spectrum, o.boundCodes); }},
    };
    all.insert(all.end(), rows.begin(), rows.end());
}

}  // namespace

std::vector<Operation> transformOperations() {
    std::vector<Operation> all;
    addForward(all);
    addMagnitudes(all, "bytes", &Operands::newBytes, &Operands::boundBytes, "newBytes");
    addMagnitudes(all, "words", &Operands::newWords, &Operands::boundWords, "newWords");
    addMagnitudes(all, "doubles", &Operands::newFirst, &Operands::boundFirst, "newFirst");
    addOtherInverses(all);
    addBanded(all);
    return all;
}

}  // namespace faults
