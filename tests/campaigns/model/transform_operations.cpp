// Operations of transforms: forward, inverse, angles and quadrants.
#include <utility>

#include "campaigns/model/operation.h"
#include "campaigns/model/transforms.h"

namespace model {
namespace {

template <class T>
void addForward(Operations& all, const std::string& type) {
    using enum Domain;
    all.push_back({"forward " + type,
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       mfForwardFFT<T>(imagesOf<T>(l)[at(a, 0)], l.buffers[at(a, 1)]);
                   },
                   [](World& w, const Arguments& a) {
                       forward(imagesOf<T>(w)[at(a, 0)], w.buffers[at(a, 1)], w.poll);
                   },
                   8});
    all.push_back({"forward two " + type,
                   {kObject, kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       mfForwardFFT<T>(imagesOf<T>(l)[at(a, 0)], imagesOf<T>(l)[at(a, 1)],
                                       l.buffers[at(a, 2)]);
                   },
                   [](World& w, const Arguments& a) {
                       forward(imagesOf<T>(w)[at(a, 0)], imagesOf<T>(w)[at(a, 1)],
                               w.buffers[at(a, 2)], w.poll);
                   },
                   5});
}

// `destroy` 2 stands for the form that takes a const buffer.
constexpr long kConst = 2;

template <class T>
void addInverse(Operations& all, const std::string& type) {
    using enum Domain;
    all.push_back({"inverse to " + type,
                   {kObject, kObject, kFlag, kForm},
                   [](Library& l, const Arguments& a) {
                       mvFrequencyBuffer& b = l.buffers[at(a, 0)];
                       mvPelBuffer<T>& out = imagesOf<T>(l)[at(a, 1)];
                       if (a[3] >= kConst) {
                           mfInverseFFT<T>(std::as_const(b), out, a[2] != 0);
                       } else {
                           mfInverseFFT<T>(b, out, a[2] != 0, a[3] != 0);
                       }
                   },
                   [](World& w, const Arguments& a) {
                       inverse<T>(w.buffers[at(a, 0)], imagesOf<T>(w)[at(a, 1)], nullptr, nullptr,
                                  a[2] != 0, a[3] == 1, w.poll);
                   },
                   5});
}

template <class T>
void addAngle(Operations& all, const std::string& type) {
    using enum Domain;
    // The other image must be another object; it may share pels.
    const Domain other = Domain::kOtherObject;
    all.push_back({"angle of " + type,
                   {kObject, kObject, other, kFlag, kForm},
                   [](Library& l, const Arguments& a) {
                       mvFrequencyBuffer& b = l.buffers[at(a, 0)];
                       mvPelBuffer<T>& out = imagesOf<T>(l)[at(a, 1)];
                       mvPelBuffer<double>& angle = l.doubles[at(a, 2)];
                       if (a[4] >= kConst) {
                           mfInverseFFTAngle<T>(std::as_const(b), out, angle, a[3] != 0);
                       } else {
                           mfInverseFFTAngle<T>(b, out, angle, a[3] != 0, a[4] != 0);
                       }
                   },
                   [](World& w, const Arguments& a) {
                       inverse<T>(w.buffers[at(a, 0)], imagesOf<T>(w)[at(a, 1)],
                                  &w.doubles[at(a, 2)], nullptr, a[3] != 0, a[4] == 1, w.poll);
                   },
                   3});
}

template <class T>
void addQuadrants(Operations& all, const std::string& type) {
    using enum Domain;
    // The other image must be another object; it may share pels.
    const Domain other = Domain::kOtherObject;
    all.push_back({"quadrants of " + type,
                   {kObject, kObject, other, kFlag, kForm},
                   [](Library& l, const Arguments& a) {
                       mvFrequencyBuffer& b = l.buffers[at(a, 0)];
                       mvPelBuffer<T>& out = imagesOf<T>(l)[at(a, 1)];
                       mvPelBuffer<Byte>& quadrant = l.bytes[at(a, 2)];
                       if (a[4] >= kConst) {
                           mfInverseFFTQuadrant<T>(std::as_const(b), out, quadrant, a[3] != 0);
                       } else {
                           mfInverseFFTQuadrant<T>(b, out, quadrant, a[3] != 0, a[4] != 0);
                       }
                   },
                   [](World& w, const Arguments& a) {
                       inverse<T>(w.buffers[at(a, 0)], imagesOf<T>(w)[at(a, 1)], nullptr,
                                  &w.bytes[at(a, 2)], a[3] != 0, a[4] == 1, w.poll);
                   },
                   3});
}

void addBetweenBuffers(Operations& all) {
    using enum Domain;
    all.push_back({"forward buffer",
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       mfForwardFFT(l.buffers[at(a, 0)], l.buffers[at(a, 1)]);
                   },
                   [](World& w, const Arguments& a) {
                       forward(w.buffers[at(a, 0)], w.buffers[at(a, 1)], w.poll);
                   },
                   4});
    all.push_back({"inverse buffer",
                   {kObject, kObject, kForm},
                   [](Library& l, const Arguments& a) {
                       mvFrequencyBuffer& src = l.buffers[at(a, 0)];
                       if (a[2] >= kConst) {
                           mfInverseFFT(std::as_const(src), l.buffers[at(a, 1)]);
                       } else {
                           mfInverseFFT(src, l.buffers[at(a, 1)], a[2] != 0);
                       }
                   },
                   [](World& w, const Arguments& a) {
                       inverse(w.buffers[at(a, 0)], w.buffers[at(a, 1)], a[2] == 1, w.poll);
                   },
                   6});
}

void addParts(Operations& all) {
    using enum Domain;
    all.push_back({"inverse to parts",
                   {kObject, kObject, kOtherObject, kForm},
                   [](Library& l, const Arguments& a) {
                       mvFrequencyBuffer& b = l.buffers[at(a, 0)];
                       if (a[3] >= kConst) {
                           mfInverseFFT(std::as_const(b), l.doubles[at(a, 1)], l.doubles[at(a, 2)]);
                       } else {
                           mfInverseFFT(b, l.doubles[at(a, 1)], l.doubles[at(a, 2)], a[3] != 0);
                       }
                   },
                   [](World& w, const Arguments& a) {
                       inverse(w.buffers[at(a, 0)], w.doubles[at(a, 1)], w.doubles[at(a, 2)],
                               a[3] == 1, w.poll);
                   },
                   5});
}

void addPhases(Operations& all) {
    using enum Domain;
    all.push_back({"angles",
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       mf_ComputeAngleImage(l.buffers[at(a, 0)], l.doubles[at(a, 1)]);
                   },
                   [](World& w, const Arguments& a) {
                       angleImage(w.buffers[at(a, 0)], w.doubles[at(a, 1)], w.poll);
                   }});
    all.push_back({"quadrants",
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       mf_ComputeQuadrantImage(l.buffers[at(a, 0)], l.bytes[at(a, 1)]);
                   },
                   [](World& w, const Arguments& a) {
                       quadrantImage(w.buffers[at(a, 0)], w.bytes[at(a, 1)], w.poll);
                   }});
}

template <class T>
void addOfPels(Operations& all, const std::string& type) {
    addForward<T>(all, type);
    addInverse<T>(all, type);
    addAngle<T>(all, type);
    addQuadrants<T>(all, type);
}

}  // namespace

void addTransformOperations(Operations& all) {
    addOfPels<Byte>(all, "bytes");
    addOfPels<Short>(all, "shorts");
    addOfPels<double>(all, "doubles");
    addBetweenBuffers(all);
    addParts(all);
    addPhases(all);
}

}  // namespace model
