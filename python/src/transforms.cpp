// The transforms, the phase of a plane and the display mapping.
#include <pybind11/numpy.h>

#include <string>
#include <type_traits>
#include <variant>

#include "attention.h"
#include "frequency_buffer.h"
#include "pel_buffers.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

py::object forwardPlane(Buffer& src, const py::object& dst) {
    const Destination out(dst);
    const Uses uses({&out.buffer().usage}, {&src.usage});
    unlocked([&] { mfForwardFFT(src.spectrum, out.spectrum()); });
    return out.result();
}

py::object forwardImage(const py::object& source, const py::object& dst) {
    const Image image = inputImage(source, "image");
    const Destination out(dst);
    const Uses uses({&out.buffer().usage}, {});
    std::visit([&](const auto& pels) { unlocked([&] { mf_ForwardFFT(pels, out.spectrum()); }); },
               image.pels);
    return out.result();
}

py::object forwardComplex(const py::object& real, const py::object& imaginary,
                          const py::object& dst) {
    const Image re = inputImage(real, "real"), im = inputImage(imaginary, "imaginary");
    const Destination out(dst);
    const Uses uses({&out.buffer().usage}, {});
    std::visit(
        [&]<class T>(const mvPelBuffer<T>& reals) {
            const auto& imaginaries = requirePels<T>(im, "imaginary");
            unlocked([&] { mf_ForwardFFT(reals, imaginaries, out.spectrum()); });
        },
        re.pels);
    return out.result();
}

py::object forward(const py::object& image, const py::object& imaginary, const py::object& dst) {
    if (!imaginary.is_none()) return forwardComplex(image, imaginary, dst);
    if (py::isinstance<Buffer>(image)) return forwardPlane(image.cast<Buffer&>(), dst);
    return forwardImage(image, dst);
}

py::object inversePlane(Buffer& src, const py::object& dst, bool destroy) {
    const Destination out(dst);
    const Uses uses({&out.buffer().usage, destroy ? &src.usage : &out.buffer().usage},
                    {&src.usage});
    unlocked([&] { mfInverseFFT(src.spectrum, out.spectrum(), destroy); });
    return out.result();
}

// An inverse transform into pels: `operation` runs without the lock.
template <class Operation>
void inverseToPels(Buffer& src, bool destroy, Operation operation) {
    if (destroy) {
        const Uses uses({&src.usage}, {});
        unlocked(operation);
    } else {
        const Uses uses({}, {&src.usage});
        unlocked(operation);
    }
}

// What a whole range is spread over must have one.
void requireIntegers(bool rescale, Output& out) {
    if (!rescale || !std::holds_alternative<mvPelBuffer<double>>(out.pels())) return;
    throw mvFrequencyDefs::InvalidArgument("Rescaling needs an output of integers.");
}

py::object inverseMagnitude(Buffer& src, const py::object& out, bool rescale, bool destroy) {
    Output target(out, "out");
    requireIntegers(rescale, target);
    std::visit(
        [&]<class T>(mvPelBuffer<T>& pels) {
            inverseToPels(src, destroy, [&] {
                mf_InverseFFT(src.spectrum, pels, static_cast<mvPelBuffer<double>*>(nullptr),
                              rescale, destroy);
            });
        },
        target.pels());
    return target.result();
}

py::object inverse(Buffer& src, const py::object& out, bool rescale, bool destroy) {
    if (!py::isinstance<Buffer>(out)) return inverseMagnitude(src, out, rescale, destroy);
    if (rescale) throw mvFrequencyDefs::InvalidArgument("Rescaling needs an output of integers.");
    return inversePlane(src, out, destroy);
}

py::tuple inverseComplex(Buffer& src, const py::object& real, const py::object& imaginary,
                         bool destroy) {
    Output re = Output::of<double>(real, "real"), im = Output::of<double>(imaginary, "imaginary");
    inverseToPels(src, destroy,
                  [&] { mfInverseFFT(src.spectrum, re.as<double>(), im.as<double>(), destroy); });
    return py::make_tuple(re.result(), im.result());
}

py::tuple inverseAngle(Buffer& src, const py::object& out, const py::object& angle, bool rescale,
                       bool destroy) {
    Output magnitudes(out, "out"), angles = Output::of<double>(angle, "angle");
    requireIntegers(rescale, magnitudes);
    std::visit(
        [&](auto& pels) {
            inverseToPels(src, destroy, [&] {
                mf_InverseFFT(src.spectrum, pels, &angles.as<double>(), rescale, destroy);
            });
        },
        magnitudes.pels());
    return py::make_tuple(magnitudes.result(), angles.result());
}

py::tuple inverseQuadrant(Buffer& src, const py::object& out, const py::object& quadrant,
                          bool rescale, bool destroy) {
    using Byte = unsigned char;
    Output magnitudes(out, "out"), quadrants = Output::of<Byte>(quadrant, "quadrant");
    requireIntegers(rescale, magnitudes);
    std::visit(
        [&](auto& pels) {
            inverseToPels(src, destroy, [&] {
                mf_InverseFFT(src.spectrum, pels, quadrants.as<Byte>(), rescale, destroy);
            });
        },
        magnitudes.pels());
    return py::make_tuple(magnitudes.result(), quadrants.result());
}

// One of the two phase images of a plane.
template <class T, void (*compute)(const mvFrequencyBuffer&, mvPelBuffer<T>&)>
py::object phaseImage(const Buffer& buffer, const py::object& out) {
    Output target = Output::of<T>(out, std::is_same_v<T, double> ? "angle" : "quadrant");
    const Uses uses({}, {&buffer.usage});
    unlocked([&] { compute(buffer.spectrum, target.as<T>()); });
    return target.result();
}

py::array mapImage(const py::object& source, long mapping, double low, double high) {
    using Defs = mvFrequencyDefs;
    if (mapping < Defs::eMapClip || mapping > Defs::eMapAngle) {
        throw py::value_error(std::to_string(mapping) + " is no FrequencyMapping");
    }
    const auto kind = static_cast<Defs::FrequencyMapping>(mapping);
    const Image image = inputImage(source, "src");
    const auto& pels = requirePels<double>(image, "src");
    return arrayOf(unlocked([&] { return mfFrequencyMapImage(pels, kind, low, high); }));
}

void bindForward(py::module_& module) {
    module.def(
        "forward_fft", &forward, "image"_a, "imaginary"_a = py::none(), py::kw_only(),
        "dst"_a = py::none(),
        "The spectrum of an image, numpy.fft.fft2 of the image padded with zeros to powers of\n"
        "two; a uint8, uint16 or float64 array or a PelBuffer. The result keeps size, offset and\n"
        "client transform. A complex image comes as two images of one dtype, size and offset; the\n"
        "complex plane that a FrequencyBuffer holds is taken as well.\n"
        "\n"
        "dst is filled, with the memory it has where the size allows; without it a new buffer is\n"
        "made. Raises UnboundWindow for a PelBuffer without pels, InvalidSize for a side above\n"
        "2048.\n"
        "\n"
        ">>> import numpy as np\n"
        ">>> forward_fft(np.ones((3, 5), np.uint8)).get(0, 0)\n"
        "(15+0j)\n");
    module.def("forward_fft", &forwardPlane, "src"_a, py::kw_only(), "dst"_a = py::none(),
               "The spectrum of the complex plane that a buffer holds, into dst or a new buffer;\n"
               "dst may be src.");
    module.def(
        "forward_fft", &forwardComplex, "real"_a, "imaginary"_a, py::kw_only(),
        "dst"_a = py::none(),
        "The spectrum of a complex image given as two images of one dtype, size and offset.");
}

void bindInverse(py::module_& module) {
    const py::str float64("float64");
    module.def(
        "inverse_fft", &inverse, "src"_a, "out"_a = float64, py::kw_only(), "rescale"_a = false,
        "destroy"_a = false,
        "The magnitudes of the inverse transform, scaled by 1 / (width * height), in an image of\n"
        "the size that the source image had; integer pels are rounded half up and clamped to\n"
        "their range.\n"
        "\n"
        "out is a dtype (a new array is returned), or an array or PelBuffer that receives the "
        "pels\n"
        "and is returned, or a FrequencyBuffer for the unscaled complex plane. rescale spreads "
        "the\n"
        "magnitudes over the whole range of integer pels, of which 1e10 / (width * height) and\n"
        "darker becomes 0 when all are brighter; for others it raises InvalidArgument. destroy "
        "transforms within src, which is faster;\n"
        "its frequencies are gone then. Raises Uninitialized without data.\n"
        "\n"
        ">>> import numpy as np\n"
        ">>> image = np.arange(6, dtype=np.uint8).reshape(2, 3)\n"
        ">>> inverse_fft(forward_fft(image), np.uint8)\n"
        "array([[0, 1, 2],\n"
        "       [3, 4, 5]], dtype=uint8)\n");
    module.def("inverse_fft_complex", &inverseComplex, "src"_a, "real"_a = py::none(),
               "imaginary"_a = py::none(), py::kw_only(), "destroy"_a = false,
               "The scaled real and imaginary parts of the inverse transform, two float64 images.");
    module.def("inverse_fft_angle", &inverseAngle, "src"_a, "out"_a = float64,
               "angle"_a = py::none(), py::kw_only(), "rescale"_a = false, "destroy"_a = false,
               "The magnitudes as of inverse_fft, and the angles of the complex pels in radians,\n"
               "-pi to pi.");
    module.def("inverse_fft_quadrant", &inverseQuadrant, "src"_a, "out"_a = float64,
               "quadrant"_a = py::none(), py::kw_only(), "rescale"_a = false, "destroy"_a = false,
               "The magnitudes as of inverse_fft, and the quadrants of the complex pels as uint8:\n"
               "bit 0 for a negative real part, bit 1 for a negative imaginary part.");
}

void bindPhase(py::module_& module) {
    module.def("compute_angle_image", &phaseImage<double, &mf_ComputeAngleImage>, "buffer"_a,
               "angle"_a = py::none(),
               "The angles of a plane's elements over the image area, in radians, -pi to pi.");
    module.def(
        "compute_quadrant_image", &phaseImage<unsigned char, &mf_ComputeQuadrantImage>, "buffer"_a,
        "quadrant"_a = py::none(),
        "The quadrants of a plane's elements over the image area: bit 0 for a negative real\n"
        "part, bit 1 for a negative imaginary part.");
}

void bindMapping(py::module_& module) {
    module.def("frequency_map_image", &mapImage, "src"_a, "mapping"_a, "low"_a = 0.0,
               "high"_a = 0.0,
               "A uint8 image of a float64 one for display. Only\n"
               "FrequencyMapping.RANGE reads low and high. AUTO_SCALE, LOG and ANGLE keep the low "
               "eight bits and\n"
               "so wrap around. Raises UnboundWindow for a PelBuffer without pels.\n"
               "\n"
               ">>> import numpy as np\n"
               ">>> frequency_map_image(np.array([[-1.0, 7.9, 300.0]]), FrequencyMapping.CLIP)\n"
               "array([[  0,   7, 255]], dtype=uint8)\n");
}

}  // namespace

void bindTransforms(py::module_& module) {
    bindForward(module);
    bindInverse(module);
    bindPhase(module);
    bindMapping(module);
}
