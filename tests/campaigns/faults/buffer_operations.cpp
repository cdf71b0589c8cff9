// Frequency buffers, their arithmetic and images, and the errors.
#include "campaigns/faults/operations.h"
#include "support/pel_images.h"
#include "support/streams.h"
#include "support/thrown.h"

namespace faults {

namespace {

std::string storedBuffer() {
    const auto pels = support::pelBufferOf(reference::Image<double>(5, 3));
    mvFrequencyBuffer buffer(pels, pels);
    return recordOf(buffer);
}

void load(const std::string& record, mvFrequencyBuffer& target) {
    loadFrom(record, [&](mvArchive& ar) { ar || target; });
}

auto mapped(mvFrequencyDefs::FrequencyMapping mapping) {
    return [mapping](Operands& o) { o.newBytes = mfFrequencyMapImage(o.doubles, mapping, -1, 1); };
}

}  // namespace

std::vector<Operation> bufferOperations() {
    using Buffer = mvFrequencyBuffer;
    const std::string record = storedBuffer();
    const std::string cut = record.substr(0, record.size() - 1);
    return {
        {"plane of zeros", [](Operands&) { Buffer(8, 16); }},
        {"plane that is too large", [](Operands&) { Buffer(2049, 1); }, {}, support::kTooLarge},
        {"copy", [](Operands& o) { Buffer{o.spectrum}; }},
        {"copy of no data", [](Operands& o) { Buffer{o.empty}; }},
        {"complex buffer", [](Operands& o) { Buffer(o.doubles, o.doubles); }},
        {"complex buffer of unbound images",
         [](Operands& o) { Buffer(o.newFirst, o.newFirst); },
         {},
         support::kUnbound},
        {"reduced copy", [](Operands& o) { Buffer(o.other, 2, 4); }},
        {"reduced copy of no data",
         [](Operands& o) { Buffer(o.empty, 2, 2); },
         {},
         support::kNoData},
        {"assignment to no data", [](Operands& o) { o.empty = o.spectrum; }},
        {"assignment to another size", [](Operands& o) { o.other = o.spectrum; }},
        {"assignment to the same size", [](Operands& o) { o.spent = o.spectrum; }},
        {"moving assignment", [](Operands& o) { o.other = std::move(o.spectrum); }},
        {"real part", [](Operands& o) { o.newFirst = o.spectrum.getRealImage(true); }},
        {"imaginary part", [](Operands& o) { o.newFirst = o.spectrum.getImaginaryImage(false); }},
        {"magnitudes", [](Operands& o) { o.newFirst = o.spectrum.getMagnitudeImage(true); }},
        {"phases", [](Operands& o) { o.newFirst = o.spectrum.getPhaseImage(false); }},
        {"magnitudes of a spent buffer",
         [](Operands& o) { o.newFirst = o.spent.getMagnitudeImage(true); },
         {},
         support::kSpent},
        {"element", [](Operands& o) { o.spectrum.put(0, 0, o.spectrum.get(0, 0, true), true); }},
        {"element outside",
         [](Operands& o) { o.spectrum.getReal(-5000, 0, true); },
         {},
         support::kOutOfBounds},
        {"sum", [](Operands& o) { mfFrequencyAdd(o.spectrum, o.spectrum, o.other); }},
        {"sum in place", [](Operands& o) { mfFrequencyAdd(o.spectrum, o.spectrum); }},
        {"difference", [](Operands& o) { mfFrequencySubtract(o.spectrum, o.spectrum, o.empty); }},
        {"difference in place", [](Operands& o) { mfFrequencySubtract(o.spectrum, o.spectrum); }},
        {"difference into the subtrahend",
         [](Operands& o) {
             mvFrequencyBuffer a = o.spectrum;
             mfFrequencySubtract(a, o.spectrum, o.spectrum);
         }},
        {"product", [](Operands& o) { mfFrequencyMultiply(o.spectrum, o.spectrum, o.other); }},
        {"product in place", [](Operands& o) { mfFrequencyMultiply(o.spectrum, o.spectrum); }},
        {"conjugate", [](Operands& o) { mfFrequencyConjugate(o.spectrum, o.other); }},
        {"conjugate in place", [](Operands& o) { mfFrequencyConjugate(o.spectrum); }},
        {"sum of no data",
         [](Operands& o) { mfFrequencyAdd(o.empty, o.spectrum); },
         {},
         support::kNoData},
        {"clipped map", mapped(mvFrequencyDefs::eMapClip)},
        {"scaled map", mapped(mvFrequencyDefs::eMapAutoScale)},
        {"map of a range", mapped(mvFrequencyDefs::eMapRange)},
        {"logarithmic map", mapped(mvFrequencyDefs::eMapLog)},
        {"map of angles", mapped(mvFrequencyDefs::eMapAngle)},
        {"stored buffer",
         [](Operands& o) { o.written = hashOfStored([&](mvArchive& ar) { ar || o.spectrum; }); }},
        {"loaded buffer", [=](Operands& o) { load(record, o.other); }, {{"other", Left::kLoaded}}},
        {"loaded buffer into no data",
         [=](Operands& o) { load(record, o.empty); },
         {{"empty", Left::kLoaded}}},
        {"loaded buffer that ends early",
         [=](Operands& o) { load(cut, o.other); },
         {{"other", Left::kLoaded}},
         "mvException"},
    };
}

}  // namespace faults
