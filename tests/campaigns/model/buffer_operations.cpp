// Operations of frequency buffers: life, elements, component images.
#include <cmath>
#include <cstdint>

#include "campaigns/model/buffers.h"
#include "campaigns/model/images.h"
#include "campaigns/model/operation.h"
#include "support/buffer_probe.h"
#include "support/thrown.h"

namespace model {
namespace {

using reference::Complex;
using reference::Plane;
using support::BufferProbe;

void addMaking(Operations& all) {
    using enum Domain;
    all.push_back({"new buffer",
                   {kObject, kAnySize, kAnySize},
                   [](Library& l, const Arguments& a) {
                       l.buffers[at(a, 0)] = mvFrequencyBuffer(a[1], a[2]);
                   },
                   [](World& w, const Arguments& a) {
                       Buffer made;
                       setAndAllocate(made, a[1], a[2]);
                       made.xform = {true, {1, 0, 0, 1, 0, 0}};
                       move(w.buffers[at(a, 0)], made);
                   },
                   2});
    all.push_back(
        {"empty buffer",
         {kObject},
         [](Library& l, const Arguments& a) { l.buffers[at(a, 0)] = mvFrequencyBuffer(); },
         [](World& w, const Arguments& a) {
             Buffer made;
             move(w.buffers[at(a, 0)], made);
         },
         1});
}

void addAssigning(Operations& all) {
    using enum Domain;
    all.push_back(
        {"assign buffer",
         {kObject, kObject},
         [](Library& l, const Arguments& a) { l.buffers[at(a, 0)] = l.buffers[at(a, 1)]; },
         [](World& w, const Arguments& a) { assign(w.buffers[at(a, 0)], w.buffers[at(a, 1)]); },
         4});
    all.push_back({"copy buffer",
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       l.buffers[at(a, 0)] = mvFrequencyBuffer(l.buffers[at(a, 1)]);
                   },
                   [](World& w, const Arguments& a) {
                       Buffer made;
                       assign(made, w.buffers[at(a, 1)]);
                       move(w.buffers[at(a, 0)], made);
                   }});
}

void addTaking(Operations& all) {
    using enum Domain;
    all.push_back(
        {"move buffer",
         {kObject, kObject},
         [](Library& l, const Arguments& a) {
             mvFrequencyBuffer& src = l.buffers[at(a, 1)];
             l.buffers[at(a, 0)] = std::move(src);
         },
         [](World& w, const Arguments& a) { move(w.buffers[at(a, 0)], w.buffers[at(a, 1)]); },
         1});
    all.push_back({"reduced buffer",
                   {kObject, kObject, kSize, kSize},
                   [](Library& l, const Arguments& a) {
                       l.buffers[at(a, 0)] = mvFrequencyBuffer(l.buffers[at(a, 1)], a[2], a[3]);
                   },
                   [](World& w, const Arguments& a) {
                       Buffer made = reduced(w.buffers[at(a, 1)], a[2], a[3]);
                       move(w.buffers[at(a, 0)], made);
                   },
                   5});
    all.push_back({"complex buffer",
                   {kObject, kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       l.buffers[at(a, 0)] =
                           mvFrequencyBuffer(l.doubles[at(a, 1)], l.doubles[at(a, 2)]);
                   },
                   [](World& w, const Arguments& a) {
                       Buffer made = complexPlane(w.doubles[at(a, 1)], w.doubles[at(a, 2)], w.poll);
                       move(w.buffers[at(a, 0)], made);
                   },
                   5,
                   true});
}

void addState(Operations& all) {
    using enum Domain;
    all.push_back(
        {"resize buffer",
         {kObject, kAnySize, kAnySize},
         [](Library& l, const Arguments& a) {
             BufferProbe::setAndAllocateFrequencyBuffer(l.buffers[at(a, 0)], a[1], a[2]);
         },
         [](World& w, const Arguments& a) { setAndAllocate(w.buffers[at(a, 0)], a[1], a[2]); }});
    all.push_back({"mask buffer",
                   {kObject, kFlag, kPlace, kPlace},
                   [](Library& l, const Arguments& a) {
                       BufferProbe::maskFrequencyBuffer(l.buffers[at(a, 0)], a[1] != 0, a[2], a[3]);
                   },
                   [](World& w, const Arguments& a) {
                       Buffer& b = w.buffers[at(a, 0)];
                       b.masked = a[1] != 0;
                       b.maskedMiny = a[2];
                       b.maskedMaxy = a[3];
                   }});
    all.push_back({"clear band",
                   {kObject},
                   [](Library& l, const Arguments& a) { l.buffers[at(a, 0)].clearBand(); },
                   [](World& w, const Arguments& a) {
                       Buffer& b = w.buffers[at(a, 0)];
                       b.masked = false;
                       b.maskedMiny = b.maskedMaxy = 0;
                   }});
    all.push_back({"compare buffers",
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       l.answer = {l.buffers[at(a, 0)] == l.buffers[at(a, 1)] ? 1.0 : 0.0};
                   },
                   [](World& w, const Arguments& a) {
                       w.answer = {isEqual(w.buffers[at(a, 0)], w.buffers[at(a, 1)]) ? 1.0 : 0.0};
                   }});
}

// Values that are no floats, some beyond their range.
double written(long seed) {
    auto state = static_cast<std::uint64_t>(seed);
    return valueOf<double>(state) * 1.1;
}

void addReading(Operations& all) {
    using enum Domain;
    all.push_back({"get",
                   {kObject, kPlace, kPlace, kFlag},
                   [](Library& l, const Arguments& a) {
                       const mvFrequencyBuffer& b = l.buffers[at(a, 0)];
                       const mvPair<double> z = b.get(a[1], a[2], a[3] != 0);
                       l.answer = {z.x, z.y, b.getReal(a[1], a[2], a[3] != 0),
                                   b.getImaginary(a[1], a[2], a[3] != 0)};
                   },
                   [](World& w, const Arguments& a) {
                       const float* z = element(w.buffers[at(a, 0)], a[1], a[2], a[3] != 0);
                       w.answer = {z[0], z[1], z[0], z[1]};
                   },
                   4});
}

void addWriting(Operations& all) {
    using enum Domain;
    all.push_back(
        {"put",
         {kObject, kPlace, kPlace, kFlag, kSeed},
         [](Library& l, const Arguments& a) {
             l.buffers[at(a, 0)].put(a[1], a[2], {written(a[4]), written(a[4] + 1)}, a[3] != 0);
         },
         [](World& w, const Arguments& a) {
             float* z = element(w.buffers[at(a, 0)], a[1], a[2], a[3] != 0);
             z[0] = static_cast<float>(written(a[4]));
             z[1] = static_cast<float>(written(a[4] + 1));
         },
         4});
    all.push_back({"put real",
                   {kObject, kPlace, kPlace, kFlag, kSeed},
                   [](Library& l, const Arguments& a) {
                       l.buffers[at(a, 0)].putReal(a[1], a[2], written(a[4]), a[3] != 0);
                   },
                   [](World& w, const Arguments& a) {
                       element(w.buffers[at(a, 0)], a[1], a[2], a[3] != 0)[0] =
                           static_cast<float>(written(a[4]));
                   }});
    all.push_back({"put imaginary",
                   {kObject, kPlace, kPlace, kFlag, kSeed},
                   [](Library& l, const Arguments& a) {
                       l.buffers[at(a, 0)].putImaginary(a[1], a[2], written(a[4]), a[3] != 0);
                   },
                   [](World& w, const Arguments& a) {
                       element(w.buffers[at(a, 0)], a[1], a[2], a[3] != 0)[1] =
                           static_cast<float>(written(a[4]));
                   }});
}

double phaseOf(Complex z) {
    return mvRadian(std::atan2(static_cast<double>(z.im), static_cast<double>(z.re)))
        .norm()
        .toDouble();
}

// A new image of all elements, in storage coordinates or with DC in the middle.
template <class Value>
Image<double> component(const Buffer& b, bool centred, Value value) {
    requireFrequencies(b);
    const Plane plane = planeOf(b);
    Image<double> image = newImage<double>(b.width, b.height);
    for (long y = 0; y < b.height; ++y) {
        for (long x = 0; x < b.width; ++x) {
            const long column = centred ? (x + b.width / 2) % b.width : x;
            const long row = centred ? (y + b.height / 2) % b.height : y;
            image.at(column, row) = value(plane.at(x, y));
        }
    }
    return image;
}

using GetImage = mvPelBuffer<double> (mvFrequencyBuffer::*)(bool) const;

void addComponent(Operations& all, const char* name, GetImage get, double (*value)(Complex)) {
    using enum Domain;
    all.push_back({name,
                   {kObject, kObject, kFlag},
                   [get](Library& l, const Arguments& a) {
                       l.doubles[at(a, 1)] = (l.buffers[at(a, 0)].*get)(a[2] != 0);
                   },
                   [value](World& w, const Arguments& a) {
                       w.doubles[at(a, 1)] = component(w.buffers[at(a, 0)], a[2] != 0, value);
                   }});
}

void addComponents(Operations& all) {
    addComponent(all, "real image", &mvFrequencyBuffer::getRealImage,
                 [](Complex z) { return static_cast<double>(z.re); });
    addComponent(all, "imaginary image", &mvFrequencyBuffer::getImaginaryImage,
                 [](Complex z) { return static_cast<double>(z.im); });
    addComponent(all, "magnitude image", &mvFrequencyBuffer::getMagnitudeImage, [](Complex z) {
        return static_cast<double>(std::sqrt(z.re * z.re + z.im * z.im));
    });
    addComponent(all, "phase image", &mvFrequencyBuffer::getPhaseImage, phaseOf);
}

}  // namespace

void addBufferOperations(Operations& all) {
    addMaking(all);
    addAssigning(all);
    addTaking(all);
    addState(all);
    addReading(all);
    addWriting(all);
    addComponents(all);
}

}  // namespace model
