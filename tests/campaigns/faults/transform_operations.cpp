// Forward and inverse transforms.
#include <type_traits>
#include <utility>

#include "campaigns/faults/operations.h"
#include "support/thrown.h"

namespace faults {

namespace {

// The magnitudes of one pel type, into a new and a bound image, alone and with a second output. An
// output that is not bound is the target itself, and is bound to a new image before the last poll;
// a bound one is written at last.
template <class T>
class Magnitudes {
  public:
    Magnitudes(std::vector<Operation>& all, std::string pels, mvPelBuffer<T> Operands::*fresh,
               mvPelBuffer<T> Operands::*bound, std::string freshName)
        : all_(all),
          pels_(std::move(pels)),
          fresh_(fresh),
          bound_(bound),
          freshName_(std::move(freshName)) {}

    void addAll() {
        add("", [](auto& buf, auto& out, Operands&, bool destroy) {
            mfInverseFFT<T>(buf, out, false, destroy);
        });
        add(", rescaled", [](auto& buf, auto& out, Operands&, bool destroy) {
            mfInverseFFT<T>(buf, out, true, destroy);
        });
        add(
            " with angles",
            [](auto& buf, auto& out, Operands& o, bool destroy) {
                mfInverseFFTAngle<T>(buf, out, o.newSecond, true, destroy);
            },
            "newSecond");
        add(
            " with bound angles",
            [](auto& buf, auto& out, Operands& o, bool destroy) {
                mfInverseFFTAngle<T>(buf, out, o.boundSecond, false, destroy);
            },
            "boundSecond");
        // Beside doubles, quadrants are an output like the magnitudes, with a copy after the mark.
        copiesAfterMark_ = std::is_same_v<T, double> ? 2 : 1;
        add(
            " with quadrants",
            [](auto& buf, auto& out, Operands& o, bool destroy) {
                mfInverseFFTQuadrant<T>(buf, out, o.newCodes, false, destroy);
            },
            "newCodes");
        add(
            " with bound quadrants",
            [](auto& buf, auto& out, Operands& o, bool destroy) {
                mfInverseFFTQuadrant<T>(buf, out, o.boundCodes, true, destroy);
            },
            std::is_same_v<T, double> ? "" : "boundCodes");
    }

  private:
    // invert(buffer, output, operands, destroy) writes the operand named `second`, too.
    template <class Invert>
    void add(const std::string& what, Invert invert, const std::string& second = "") {
        addTo(fresh_, freshName_, what, invert, second);
        addTo(bound_, "", what + ", bound", invert, second);
    }

    template <class Invert>
    void addTo(mvPelBuffer<T> Operands::*output, const std::string& outputName,
               const std::string& what, Invert invert, const std::string& second) {
        std::map<std::string, Left> mayChange;
        for (const std::string& name : {outputName, second}) {
            if (!name.empty()) mayChange[name] = Left::kImage;
        }
        const auto addRow = [&](const std::string& how, mvFrequencyBuffer Operands::*source,
                                bool destroy) {
            all_.push_back({"inverse to " + pels_ + what + how,
                            [=](Operands& o) { invert(o.*source, o.*output, o, destroy); },
                            mayChange, "nothing", copiesAfterMark_});
        };
        addRow("", &Operands::spectrum, false);
        addRow(", spent", &Operands::spent, false);
        mayChange["spectrum"] = Left::kOverwritten;
        addRow(", in place", &Operands::spectrum, true);
    }

    std::vector<Operation>& all_;
    std::string pels_;
    mvPelBuffer<T> Operands::*fresh_;
    mvPelBuffer<T> Operands::*bound_;
    std::string freshName_;
    long copiesAfterMark_ = 1;
};

// Planes with a band of rows, which is not that of the images.
void addBanded(std::vector<Operation>& all) {
    const auto add = [&](const std::string& name, mvFrequencyBuffer Operands::*source,
                         const std::string& sourceName) {
        all.push_back({name + " to a buffer",
                       [=](Operands& o) { mfInverseFFT(std::as_const(o.*source), o.other); },
                       {{"other", Left::kPlane}}});
        all.push_back({name + " to a buffer, in place",
                       [=](Operands& o) { mfInverseFFT(o.*source, o.other, true); },
                       {{sourceName, Left::kOverwritten}}});
        for (const bool rescale : {false, true}) {
            all.push_back({name + (rescale ? " to bytes, rescaled" : " to bytes"),
                           [=](Operands& o) {
                               mfInverseFFT<Byte>(std::as_const(o.*source), o.newBytes, rescale);
                           },
                           {{"newBytes", Left::kImage}}});
        }
        all.push_back({name + " in place",
                       [=](Operands& o) { mfInverseFFT(o.*source, o.newFirst, o.newSecond, true); },
                       {{"newFirst", Left::kImage},
                        {"newSecond", Left::kImage},
                        {sourceName, Left::kOverwritten}}});
    };
    add("band of rows among others", &Operands::banded, "banded");
    add("band of rows", &Operands::bandAlone, "bandAlone");
}

void addForward(std::vector<Operation>& all) {
    const std::map<std::string, Left> other = {{"other", Left::kPlane}};
    const std::map<std::string, Left> empty = {{"empty", Left::kPlane}};
    const std::vector<Operation> rows = {
        {"forward of bytes", [](Operands& o) { mfForwardFFT<Byte>(o.bytes, o.other); }, other},
        {"forward of words", [](Operands& o) { mfForwardFFT<Word>(o.words, o.other); }, other},
        {"forward of doubles", [](Operands& o) { mfForwardFFT<double>(o.doubles, o.empty); },
         empty},
        {"forward into a spent buffer",
         [](Operands& o) { mfForwardFFT<Byte>(o.bytes, o.spent); },
         {{"spent", Left::kPlane}}},
        {"forward of two images of bytes",
         [](Operands& o) { mfForwardFFT<Byte>(o.bytes, o.bytes, o.other); }, other},
        {"forward of two images of words",
         [](Operands& o) { mfForwardFFT<Word>(o.words, o.words, o.other); }, other},
        {"forward of two images of doubles",
         [](Operands& o) { mfForwardFFT<double>(o.doubles, o.doubles, o.empty); }, empty},
        {"forward of a buffer", [](Operands& o) { mfForwardFFT(o.spectrum, o.other); }, other},
        {"forward of a spent buffer", [](Operands& o) { mfForwardFFT(o.spent, o.other); }, other},
        {"forward of a buffer in place",
         [](Operands& o) { mfForwardFFT(o.spectrum, o.spectrum); },
         {{"spectrum", Left::kPlaneInPlace}}},
        {"forward of a spent buffer in place",
         [](Operands& o) { mfForwardFFT(o.spent, o.spent); },
         {{"spent", Left::kPlaneInPlace}}},
        {"forward of a band in place",
         [](Operands& o) { mfForwardFFT(o.banded, o.banded); },
         {{"banded", Left::kPlaneInPlace}}},
        {"forward of an unbound image",
         [](Operands& o) { mfForwardFFT<Byte>(mvPelBuffer<Byte>(), o.other); },
         {},
         support::kUnbound},
        {"forward of no data",
         [](Operands& o) { mfForwardFFT(mvFrequencyBuffer(), o.other); },
         {},
         support::kNoData},
    };
    all.insert(all.end(), rows.begin(), rows.end());
}

void addInversesToBuffers(std::vector<Operation>& all) {
    const std::map<std::string, Left> spectrum = {{"spectrum", Left::kOverwritten}};
    const std::vector<Operation> rows = {
        {"inverse to a buffer",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.other); },
         {{"other", Left::kPlane}}},
        {"inverse to a buffer without data",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.empty); },
         {{"empty", Left::kPlane}}},
        {"inverse to the buffer itself",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.spectrum, false); },
         {{"spectrum", Left::kPlaneInPlace}}},
        {"inverse to a buffer, in place",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.other, true); }, spectrum},
        {"inverse to a buffer without data, in place",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.empty, true); }, spectrum},
        {"inverse to a buffer of the size, in place",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.spent, true); }, spectrum},
        {"inverse to the buffer itself, in place",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.spectrum, true); }, spectrum},
        {"inverse of a spent buffer",
         [](Operands& o) { mfInverseFFT(o.spent, o.other, false); },
         {{"other", Left::kPlane}}},
        {"inverse of no data",
         [](Operands& o) {
             mvFrequencyBuffer none;
             mfInverseFFT<Byte>(none, o.newBytes, false, true);
         },
         {},
         support::kNoData},
    };
    all.insert(all.end(), rows.begin(), rows.end());
}

void addOtherImages(std::vector<Operation>& all) {
    const std::map<std::string, Left> fresh = {{"newFirst", Left::kImage},
                                               {"newSecond", Left::kImage}};
    std::map<std::string, Left> inPlace = fresh;
    inPlace["spectrum"] = Left::kOverwritten;
    const std::vector<Operation> rows = {
        {"inverse to real and imaginary",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.newFirst, o.newSecond); }, fresh},
        {"inverse to real and imaginary, in place",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.newFirst, o.newSecond, true); }, inPlace},
        {"inverse to real and imaginary, spent",
         [](Operands& o) { mfInverseFFT(o.spent, o.newFirst, o.newSecond, false); }, fresh},
        {"inverse to real and imaginary, bound",
         [](Operands& o) { mfInverseFFT(o.spectrum, o.boundFirst, o.boundSecond, true); },
         {{"boundFirst", Left::kImage},
          {"boundSecond", Left::kImage},
          {"spectrum", Left::kOverwritten}}},
        {"angles",
         [](Operands& o) { mf_ComputeAngleImage(o.spectrum, o.newFirst); },
         {{"newFirst", Left::kImage}}},
        {"angles, bound", [](Operands& o) { mf_ComputeAngleImage(o.spectrum, o.boundFirst); }},
        {"quadrants",
         [](Operands& o) { mf_ComputeQuadrantImage(o.spectrum, o.newCodes); },
         {{"newCodes", Left::kImage}}},
        {"quadrants, bound",
         [](Operands& o) { mf_ComputeQuadrantImage(o.spectrum, o.boundCodes); }},
    };
    all.insert(all.end(), rows.begin(), rows.end());
}

}  // namespace

std::vector<Operation> transformOperations() {
    std::vector<Operation> all;
    addForward(all);
    Magnitudes(all, "bytes", &Operands::newBytes, &Operands::boundBytes, "newBytes").addAll();
    Magnitudes(all, "words", &Operands::newWords, &Operands::boundWords, "newWords").addAll();
    Magnitudes(all, "doubles", &Operands::newFirst, &Operands::boundFirst, "newFirst").addAll();
    addInversesToBuffers(all);
    addOtherImages(all);
    addBanded(all);
    return all;
}

}  // namespace faults
