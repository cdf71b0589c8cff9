// Operations of arithmetic between frequency buffers.
#include "campaigns/model/buffers.h"
#include "campaigns/model/operation.h"
#include "reference/fft/arithmetic.h"
#include "support/thrown.h"

namespace model {
namespace {

using reference::Plane;

enum Check { kData, kState, kSize };

// The checks of two operands, in the order that the operation has.
void requirePair(const Buffer& a, const Buffer& b, std::array<Check, 3> order, const char* verb) {
    for (const Check check : order) {
        if (check == kData) requireData(a), requireData(b);
        if (check == kState && (a.inverseComputed || b.inverseComputed)) {
            throw Thrown{support::kSpent};
        }
        if (check == kSize && (a.width != b.width || a.height != b.height)) {
            throw Thrown{std::string("InvalidSize: Can only ") + verb +
                         " equal-sized frequency buffers."};
        }
    }
}

constexpr std::array<Check, 3> kStateFirst = {kData, kState, kSize};
constexpr std::array<Check, 3> kSizeFirst = {kData, kSize, kState};

using Combine = Plane (*)(const Plane&, const Plane&);

// dst = dst op src; for products src comes first.
void accumulate(Combine combine, bool srcFirst, const Buffer& src, Buffer& dst) {
    const Plane s = planeOf(src);
    const Plane d = planeOf(dst);
    setPlane(dst, srcFirst ? combine(s, d) : combine(d, s));
}

struct Arithmetic {
    const char* verb;
    void (*two)(const mvFrequencyBuffer&, mvFrequencyBuffer&);
    void (*three)(const mvFrequencyBuffer&, const mvFrequencyBuffer&, mvFrequencyBuffer&);
    Combine combine;
    bool srcFirst;
    bool commutes;
    std::array<Check, 3> orderOfTwo;
    std::array<Check, 3> orderOfThree;
};

void combineThree(const Arithmetic& op, const Buffer& a, const Buffer& b, Buffer& result) {
    requirePair(a, b, op.orderOfThree, op.verb);
    if (&result != &b) {
        assign(result, a);
        accumulate(op.combine, op.srcFirst, b, result);
    } else if (op.commutes) {
        accumulate(op.combine, op.srcFirst, a, result);
    } else {
        const Buffer temporary = b;
        assign(result, a);
        accumulate(op.combine, op.srcFirst, temporary, result);
    }
}

void addArithmetic(Operations& all, const Arithmetic& op) {
    using enum Domain;
    all.push_back(
        {std::string(op.verb) + " two",
         {kObject, kObject},
         [op](Library& l, const Arguments& a) { op.two(l.buffers[at(a, 0)], l.buffers[at(a, 1)]); },
         [op](World& w, const Arguments& a) {
             Buffer& src = w.buffers[at(a, 0)];
             Buffer& dst = w.buffers[at(a, 1)];
             requirePair(src, dst, op.orderOfTwo, op.verb);
             accumulate(op.combine, op.srcFirst, src, dst);
         },
         2});
    all.push_back({std::string(op.verb) + " three",
                   {kObject, kObject, kObject},
                   [op](Library& l, const Arguments& a) {
                       op.three(l.buffers[at(a, 0)], l.buffers[at(a, 1)], l.buffers[at(a, 2)]);
                   },
                   [op](World& w, const Arguments& a) {
                       combineThree(op, w.buffers[at(a, 0)], w.buffers[at(a, 1)],
                                    w.buffers[at(a, 2)]);
                   },
                   2});
}

void conjugate(Buffer& b) {
    requireFrequencies(b);
    setPlane(b, reference::conjugate(planeOf(b)));
}

void addConjugates(Operations& all) {
    using enum Domain;
    all.push_back(
        {"conjugate",
         {kObject},
         [](Library& l, const Arguments& a) { mfFrequencyConjugate(l.buffers[at(a, 0)]); },
         [](World& w, const Arguments& a) { conjugate(w.buffers[at(a, 0)]); }});
    all.push_back({"conjugate into",
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       mfFrequencyConjugate(l.buffers[at(a, 0)], l.buffers[at(a, 1)]);
                   },
                   [](World& w, const Arguments& a) {
                       requireFrequencies(w.buffers[at(a, 0)]);
                       assign(w.buffers[at(a, 1)], w.buffers[at(a, 0)]);
                       conjugate(w.buffers[at(a, 1)]);
                   }});
}

}  // namespace

void addArithmeticOperations(Operations& all) {
    addArithmetic(all, {"add", mfFrequencyAdd, mfFrequencyAdd, reference::sum, false, true,
                        kStateFirst, kStateFirst});
    addArithmetic(all, {"subtract", mfFrequencySubtract, mfFrequencySubtract, reference::difference,
                        false, false, kStateFirst, kSizeFirst});
    addArithmetic(all, {"multiply", mfFrequencyMultiply, mfFrequencyMultiply, reference::product,
                        true, true, kSizeFirst, kStateFirst});
    addConjugates(all);
}

}  // namespace model
