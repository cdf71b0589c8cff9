// The class PelBuffer and its functions.
#include "pel_buffers.h"

#include <filt/fft/errors.h>

#include <pybind11/stl.h>

#include <optional>

#include "attention.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

using Point = std::pair<long, long>;
using MaybeXform = std::optional<mvXform<2>>;

void setOffset(Image& image, Point offset) {
    image.view().offset(offset.first, offset.second);
}

Point offsetOf(const Image& image) {
    const mvPair<long> offset = image.view().offset();
    return {offset.x, offset.y};
}

void setXform(Image& image, const MaybeXform& xform) {
    mv2XformCache cache;
    if (xform) cache.xform(*xform);
    image.view().copyXforms(cache);
}

MaybeXform xformOf(const Image& image) {
    const mv2XformCache& cache = image.view().xformCache();
    return cache.isSet() ? MaybeXform(cache.linearXform().xform()) : std::nullopt;
}

Image make(const py::object& pels, Point offset, const MaybeXform& xform) {
    Image image = viewOrUnbound(pels, "pels");
    setOffset(image, offset);
    setXform(image, xform);
    return image;
}

// The pels of a bound image; its dtype stands for those of an unbound one.
py::object pelsOrType(const Image& image) {
    if (!image.view().isBound()) return dtypeOf(image);
    return arrayOf(image);
}

py::array boundPels(const Image& image) {
    if (!image.view().isBound()) throw mvFrequencyDefs::UnboundWindow();
    return arrayOf(image);
}

Image deepCopy(const Image& image) {
    return std::visit([](const auto& pels) { return Image{mfPelClone(pels)}; }, image.pels);
}

Image window(const Image& image, long x, long y, long width, long height) {
    return std::visit(
        [&](const auto& pels) {
            return Image{pels.window(x, y, width, height), image.writable};
        },
        image.pels);
}

void copyPels(const py::object& source, const py::object& destination) {
    const Image image = inputImage(source, "src");
    Output output(destination, "dst");
    std::visit(
        [&]<class T>(mvPelBuffer<T>& dst) {
            const auto& src = requirePels<T>(image, "src");
            unlocked([&] { mfPelCopy(src, dst); });
        },
        output.pels());
}

Image clonePels(const py::object& source) {
    return deepCopy(inputImage(source, "src"));
}

void setPels(const py::object& destination, double value) {
    Output output(destination, "dst");
    std::visit([&]<class T>(mvPelBuffer<T>& dst) { mfPelSet(dst, static_cast<T>(value)); },
               output.pels());
}

std::string describe(const Image& image) {
    const std::string dtype = py::str(dtypeOf(image));
    if (!image.view().isBound()) return "<PelBuffer " + dtype + ", unbound>";
    const auto [x, y] = offsetOf(image);
    return "<PelBuffer " + dtype + ", " + std::to_string(image.view().width()) + " x " +
           std::to_string(image.view().height()) + " at (" + std::to_string(x) + ", " +
           std::to_string(y) + ")>";
}

using Class = py::class_<Image>;

void bindShape(Class& type) {
    type.def_property_readonly("dtype", &dtypeOf, "uint8, uint16 or float64.")
        .def_property_readonly(
            "is_bound", [](const Image& self) { return self.view().isBound(); },
            "Whether the buffer has pels.")
        .def_property_readonly(
            "width", [](const Image& self) { return self.view().width(); }, "The pels in a row.")
        .def_property_readonly(
            "height", [](const Image& self) { return self.view().height(); }, "The rows.")
        .def_property_readonly(
            "row_update", [](const Image& self) { return self.view().rowUpdate(); },
            "The step from row to row in pels.")
        .def_property("offset", &offsetOf, &setOffset,
                      "The place (x, y) of the first pel in image coordinates, in pixels.")
        .def_property("xform", &xformOf, &setXform, "The client transform, or None.");
}

void bindPels(Class& type) {
    type.def_property_readonly("pels", &boundPels,
                               "The pels as an array, not copied. Raises UnboundWindow without "
                               "pels.")
        .def(
            "__array__",
            [](const Image& self, const py::object& dtype, const py::object& copy) {
                return asNumpyAsks(boundPels(self), dtype, copy);
            },
            "dtype"_a = py::none(), "copy"_a = py::none(),
            "The pels as an array, copied for another dtype or when copy is True.")
        .def("window", &window, "x"_a, "y"_a, "width"_a, "height"_a,
             "A view of a part, at this one's offset plus (x, y). Raises mvExceptionWithString\n"
             "when it reaches outside.");
}

void bindCopies(Class& type) {
    type.def(
            "__copy__", [](const Image& self) { return self; }, "A view that shares the pels.")
        .def(
            "__deepcopy__", [](const Image& self, const py::dict&) { return deepCopy(self); },
            "memo"_a, "An image with its own pels.")
        .def("__reduce__",
             [](const py::object& self) {
                 const auto& image = self.cast<const Image&>();
                 return py::make_tuple(
                     py::type::of(self),
                     py::make_tuple(pelsOrType(image), offsetOf(image), xformOf(image)));
             })
        .def("__repr__", &describe);
}

}  // namespace

void bindPelBuffers(py::module_& module) {
    Class type(module, "PelBuffer",
               "An image with an offset and a client transform: a view of an array's pels, which\n"
               "it keeps alive. Functions take arrays as well; a PelBuffer is for images that are\n"
               "not at (0, 0).\n"
               "\n"
               ">>> import numpy as np\n"
               ">>> PelBuffer(np.zeros((2, 3), np.uint8), offset=(10, 20))\n"
               "<PelBuffer uint8, 3 x 2 at (10, 20)>\n");
    type.def(py::init(&make), "pels"_a, "offset"_a = Point(0, 0), "xform"_a = py::none(),
             "pels is a two-dimensional uint8, uint16 or float64 array with adjacent pels in its\n"
             "rows, or one of these dtypes for an image without pels, to be an output. Raises\n"
             "TypeError or ValueError for others.");
    bindShape(type);
    bindPels(type);
    bindCopies(type);
    module.def("pel_copy", &copyPels, "src"_a, "dst"_a,
               "Copies pels of one type where both images overlap, matched through their offsets.\n"
               "Raises mvExceptionWithString for an image without pels.");
    module.def("pel_clone", &clonePels, "src"_a,
               "A PelBuffer with pels of its own, and the offset and transform of src.");
    module.def("pel_set", &setPels, "dst"_a, "value"_a,
               "Sets all pels to a value. Raises mvExceptionWithString for an image without pels.");
}
