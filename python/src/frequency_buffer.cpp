// The class FrequencyBuffer.
#include "frequency_buffer.h"

#include <filt/freqfilt/filter.h>

#include <pybind11/complex.h>
#include <pybind11/numpy.h>
#include <pybind11/operators.h>
#include <pybind11/stl.h>

#include <complex>
#include <optional>
#include <string>
#include <utility>

#include "archive_bytes.h"
#include "attention.h"
#include "pel_buffers.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

// The plane is reached as a filter reaches it.
struct PlaneAccess : mvFrequencyFilter {
    using mvFrequencyFilter::getFrequencyBufferData;
};

std::unique_ptr<Buffer> copyOf(const Buffer& buffer) {
    const Uses uses({}, {&buffer.usage});
    return unlocked([&] { return std::make_unique<Buffer>(mvFrequencyBuffer(buffer.spectrum)); });
}

std::unique_ptr<Buffer> reducedCopy(const Buffer& buffer, long width, long height) {
    const Uses uses({}, {&buffer.usage});
    return unlocked([&] {
        return std::make_unique<Buffer>(mvFrequencyBuffer(buffer.spectrum, width, height));
    });
}

std::unique_ptr<Buffer> fromImages(const py::object& real, const py::object& imaginary) {
    const Image re = inputImage(real, "real"), im = inputImage(imaginary, "imaginary");
    const auto& reals = requirePels<double>(re, "real");
    const auto& imaginaries = requirePels<double>(im, "imaginary");
    return unlocked(
        [&] { return std::make_unique<Buffer>(mvFrequencyBuffer(reals, imaginaries)); });
}

void assign(Buffer& buffer, const Buffer& src) {
    buffer.requireNoViews();
    const Uses uses({&buffer.usage}, {&src.usage});
    unlocked([&] { buffer.spectrum = src.spectrum; });
}

bool equal(const Buffer& a, const Buffer& b) {
    const Uses uses({}, {&a.usage, &b.usage});
    return unlocked([&] { return a.spectrum == b.spectrum; });
}

// Counts as a view of its buffer, which it keeps alive.
class Lease {
  public:
    explicit Lease(py::object buffer)
        : buffer_(std::move(buffer)), views_(buffer_.cast<Buffer&>().views) {
        ++views_->held;
    }
    ~Lease() { --views_->held; }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;

  private:
    py::object buffer_;
    std::shared_ptr<Views> views_;
};

py::array spectrumView(const py::object& self) {
    auto& buffer = self.cast<Buffer&>();
    buffer.usage.requireUnchanging();
    const py::ssize_t width = buffer.spectrum.width(), height = buffer.spectrum.height();
    auto lease = std::make_unique<Lease>(self);
    const py::capsule owner(lease.get(), [](void* p) { delete static_cast<Lease*>(p); });
    lease.release();
    const float* const plane = PlaneAccess::getFrequencyBufferData(buffer.spectrum);
    return py::array(py::dtype::of<std::complex<float>>(), {height, width}, plane, owner);
}

// The views keep the plane that they show, and the buffer goes on with a copy of it.
void releaseViews(Buffer& buffer) {
    if (buffer.views->held == 0) return;
    const Uses uses({&buffer.usage}, {});
    auto fresh = std::make_shared<Views>();
    mvFrequencyBuffer copy = unlocked([&] { return mvFrequencyBuffer(buffer.spectrum); });
    buffer.views->plane = std::move(buffer.spectrum);
    buffer.spectrum = std::move(copy);
    buffer.views = std::move(fresh);
}

template <class Component>
py::array componentImage(const Buffer& buffer, Component component) {
    const Uses uses({}, {&buffer.usage});
    return arrayOf(unlocked(component));
}

py::bytes storedBuffer(Buffer& buffer) {
    const Uses uses({}, {&buffer.usage});
    return stored([&](mvArchive& ar) { ar || buffer.spectrum; });
}

std::unique_ptr<Buffer> loadedBuffer(const py::bytes& data) {
    auto buffer = std::make_unique<Buffer>();
    loadFrom(data, [&](mvArchive& ar) { ar || buffer->spectrum; });
    return buffer;
}

bool hasData(const Buffer& buffer) {
    return buffer.read().hasData();
}

using Point = std::pair<long, long>;

Point point(const mvPair<long>& pair) {
    return {pair.x, pair.y};
}

std::string describe(const Buffer& buffer) {
    if (buffer.usage.changing) return "<FrequencyBuffer in use>";
    if (!hasData(buffer)) return "<FrequencyBuffer without data>";
    const mvFrequencyBuffer& plane = buffer.spectrum;
    return "<FrequencyBuffer " + std::to_string(plane.width()) + " x " +
           std::to_string(plane.height()) + ">";
}

using Class = py::class_<Buffer>;

void bindLifeCycle(Class& buffer) {
    buffer.def(py::init<>(), "A buffer without data.")
        .def(py::init([](long width, long height) {
                 return std::make_unique<Buffer>(mvFrequencyBuffer(width, height));
             }),
             "width"_a, "height"_a,
             "A plane of zeros for an image of that many pels: each side is padded to the next\n"
             "power of two. Raises InvalidSize for a side above 2048.")
        .def(py::init(&reducedCopy), "src"_a, "width"_a, "height"_a,
             "The lowest width x height frequencies of src, copied without scaling: the spectrum\n"
             "of the image sized down. Both sides are powers of two from 2 to those of src.")
        .def(
            py::init(&fromImages), "real"_a, "imaginary"_a,
            "A complex plane from two float64 images of one size and offset. This is spatial data\n"
            "until forward_fft(buffer) transforms it.")
        .def("assign", &assign, "src"_a,
             "Makes this buffer a copy of src. Raises BufferError while a view of this one is "
             "held.")
        .def("__copy__", &copyOf, "A copy with its own plane.")
        .def(
            "__deepcopy__", [](const Buffer& self, const py::dict&) { return copyOf(self); },
            "memo"_a, "A copy with its own plane.")
        .def("__eq__", &equal, "other"_a, py::is_operator(),
             "Equal sizes, state, offset and plane; the client transform is not compared, and a\n"
             "NaN equals anything.")
        .def("__repr__", &describe)
        .def(py::pickle(&storedBuffer, &loadedBuffer));
    buffer.attr("__hash__") = py::none();
}

void bindSizes(Class& buffer) {
    buffer
        .def_property_readonly(
            "width", [](const Buffer& self) { return self.read().width(); },
            "The padded width in columns. Raises Uninitialized without data.")
        .def_property_readonly(
            "height", [](const Buffer& self) { return self.read().height(); },
            "The padded height in rows. Raises Uninitialized without data.")
        .def_property_readonly(
            "size", [](const Buffer& self) { return point(self.read().size()); },
            "The padded width and height, as filters need them. Raises Uninitialized without data.")
        .def_property_readonly("has_data", &hasData, "Whether the buffer has a plane.")
        .def_property_readonly(
            "inverse_computed", [](const Buffer& self) { return self.read().inverseComputed(); },
            "Whether an in-place inverse has overwritten the frequencies.");
}

void bindImage(Class& buffer) {
    buffer
        .def_property_readonly(
            "image_size", [](const Buffer& self) { return point(self.read().imageSize()); },
            "The (width, height) of the image that the plane came from; (0, 0) without data.")
        .def_property_readonly(
            "offset", [](const Buffer& self) { return point(self.read().offset()); },
            "The place (x, y) of that image; (0, 0) without data.")
        .def_property_readonly(
            "xform",
            [](const Buffer& self) {
                const mv2XformCache cache = self.read().xformCache();
                return cache.isSet() ? std::optional(cache.linearXform().xform()) : std::nullopt;
            },
            "The client transform of that image, or None; None without data.");
}

void bindBand(Class& buffer) {
    buffer
        .def_property_readonly(
            "band",
            [](const Buffer& self) {
                const auto rows = self.read().band();
                return rows ? std::optional(point(*rows)) : std::nullopt;
            },
            "The (first, last) of the rows that hold data, DC being row height / 2, or None\n"
            "when every row counts. A Gabor filter sets the band, and an inverse does not "
            "transform\n"
            "the rows outside of it. A sum has the band of one operand: clear it before the\n"
            "inverse.\n"
            "\n"
            ">>> lobe = FrequencyFilterGabor(sigma=(0.02, 0.02), plateau=(0, 0), angle=0.0,\n"
            "...                             frequency=0.25, size=(64, 64), dc_removal_radius=0)\n"
            ">>> buffer = FrequencyBuffer(64, 64)\n"
            ">>> lobe.apply(buffer)\n"
            ">>> buffer.band\n"
            "(26, 38)\n"
            ">>> buffer.clear_band()\n"
            ">>> buffer.band is None\n"
            "True\n")
        .def(
            "clear_band", [](Buffer& self) { self.change().clearBand(); },
            "Lets every row count; the plane stays as it is.");
}

void bindElements(Class& buffer) {
    buffer
        .def(
            "get",
            [](const Buffer& self, long x, long y, bool centred) {
                const mvPair<double> value = self.read().get(x, y, centred);
                return std::complex<double>(value.x, value.y);
            },
            "x"_a, "y"_a, "centred"_a = false,
            "The coefficient in column x and row y, in bins: storage coordinates, or signed\n"
            "frequencies if centred. Element access raises Uninitialized without data,\n"
            "InvalidBuffer after an in-place inverse, BadCoord outside the plane.")
        .def(
            "get_real",
            [](const Buffer& self, long x, long y, bool centred) {
                return self.read().getReal(x, y, centred);
            },
            "x"_a, "y"_a, "centred"_a = false, "The real part of one coefficient.")
        .def(
            "get_imaginary",
            [](const Buffer& self, long x, long y, bool centred) {
                return self.read().getImaginary(x, y, centred);
            },
            "x"_a, "y"_a, "centred"_a = false, "The imaginary part of one coefficient.")
        .def(
            "put",
            [](Buffer& self, long x, long y, std::complex<double> value, bool centred) {
                self.change().put(x, y, {value.real(), value.imag()}, centred);
            },
            "x"_a, "y"_a, "value"_a, "centred"_a = false,
            "Sets one coefficient, rounded to single precision.")
        .def(
            "put_real",
            [](Buffer& self, long x, long y, double value, bool centred) {
                self.change().putReal(x, y, value, centred);
            },
            "x"_a, "y"_a, "value"_a, "centred"_a = false, "Sets the real part of one coefficient.")
        .def(
            "put_imaginary",
            [](Buffer& self, long x, long y, double value, bool centred) {
                self.change().putImaginary(x, y, value, centred);
            },
            "x"_a, "y"_a, "value"_a, "centred"_a = false,
            "Sets the imaginary part of one coefficient.");
}

// One component image: name, member function, what it holds.
template <class Member>
void bindComponent(Class& buffer, const char* name, Member member, const char* doc) {
    buffer.def(
        name,
        [member](const Buffer& self, bool centred) {
            return componentImage(self, [&] { return (self.spectrum.*member)(centred); });
        },
        "centred"_a = false, doc);
}

void bindComponents(Class& buffer) {
    using Plane = mvFrequencyBuffer;
    bindComponent(buffer, "get_real_image", &Plane::getRealImage,
                  "The real parts as a new float64 array, DC at [0, 0] or, if centred, in the\n"
                  "middle. Component images raise Uninitialized, then InvalidBuffer.");
    bindComponent(buffer, "get_imaginary_image", &Plane::getImaginaryImage,
                  "The imaginary parts as a new float64 array.");
    bindComponent(buffer, "get_magnitude_image", &Plane::getMagnitudeImage,
                  "The magnitudes, linear, as a new float64 array.");
    bindComponent(buffer, "get_phase_image", &Plane::getPhaseImage,
                  "The phases in radians, 0 <= phase < 2 pi, as a new float64 array.");
    buffer.def(
        "spectrum_view", &spectrumView,
        "The plane itself as a complex64 array of height x width, not copied: column u of row v\n"
        "holds the frequency of u / width by v / height cycles per pixel, and its .real and .imag\n"
        "are the component planes.\n"
        "\n"
        "The view keeps the buffer alive. While it or any array made of its memory exists, calls\n"
        "that fill the buffer raise BufferError, until release_views(); calls that work in place\n"
        "go on and show in the view. After an in-place inverse it holds the unscaled complex\n"
        "image. numpy.asarray(buffer) is the same. Raises Uninitialized without data.\n"
        "\n"
        ">>> import numpy as np\n"
        ">>> buffer = forward_fft(np.ones((4, 4)))\n"
        ">>> view = buffer.spectrum_view()\n"
        ">>> view[0, 0]\n"
        "(16+0j)\n"
        ">>> view[0, 0] = 0\n"
        ">>> buffer.get(0, 0)\n"
        "0j\n"
        ">>> forward_fft(np.ones((8, 8)), dst=buffer)\n"
        "Traceback (most recent call last):\n"
        "BufferError: A view of the buffer's spectrum is held; release it, or call "
        "release_views(), before the buffer is filled again.\n"
        ">>> del view\n"
        ">>> forward_fft(np.ones((8, 8)), dst=buffer)\n"
        "<FrequencyBuffer 8 x 8>\n");
    buffer
        .def(
            "__array__",
            [](const py::object& self, const py::object& dtype, const py::object& copy) {
                return asNumpyAsks(spectrumView(self), dtype, copy);
            },
            "dtype"_a = py::none(), "copy"_a = py::none(),
            "The plane as an array: spectrum_view(), copied for another dtype or when copy is\n"
            "True.")
        .def(
            "release_views", &releaseViews,
            "Parts the buffer from all views of its plane, wherever they are kept, so that it can\n"
            "be filled again. The views keep the values that they had and no longer follow the\n"
            "buffer. This costs a copy of the plane when there are views. Raises RuntimeError\n"
            "while a call is at work on the buffer.\n"
            "\n"
            ">>> import numpy as np\n"
            ">>> buffer = forward_fft(np.ones((4, 4)))\n"
            ">>> kept = [buffer.spectrum_view()]\n"
            ">>> buffer.release_views()\n"
            ">>> forward_fft(np.ones((8, 8)), dst=buffer)\n"
            "<FrequencyBuffer 8 x 8>\n"
            ">>> kept[0][0, 0]\n"
            "(16+0j)\n");
}

}  // namespace

void Buffer::requireNoViews() const {
    if (views->held == 0) return;
    throw py::buffer_error(
        "A view of the buffer's spectrum is held; release it, or call release_views(), before the "
        "buffer is filled again.");
}

Destination::Destination(const py::object& given, const std::string& name)
    : object_(given.is_none() ? py::cast(std::make_unique<Buffer>()) : given) {
    if (!py::isinstance<Buffer>(object_)) {
        throw py::type_error(name + ": A spectrum goes into a FrequencyBuffer, not " +
                             std::string(py::str(py::type::of(object_).attr("__name__"))));
    }
    buffer_ = &object_.cast<Buffer&>();
    buffer_->requireNoViews();
}

void bindFrequencyBuffer(py::module_& module) {
    Class buffer(module, "FrequencyBuffer",
                 "One complex, single-precision frequency image; both sides are powers of two of\n"
                 "at most 2048.\n"
                 "\n"
                 "The zero frequency (DC) is element (0, 0); negative frequencies stand in the\n"
                 "upper half of columns and rows, as numpy.fft puts them. A buffer remembers the\n"
                 "size, offset and client transform of the image that it came from.\n"
                 "\n"
                 "One buffer is changed by one thread at a time: a call that meets another one at\n"
                 "work on the buffer raises RuntimeError.\n"
                 "\n"
                 ">>> FrequencyBuffer(600, 300).size\n"
                 "(1024, 512)\n");
    bindLifeCycle(buffer);
    bindSizes(buffer);
    bindImage(buffer);
    bindBand(buffer);
    bindElements(buffer);
    bindComponents(buffer);
}
