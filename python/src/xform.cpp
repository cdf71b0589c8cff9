// The class Xform.
#include "xform.h"

#include <base/geometry.h>

#include <pybind11/operators.h>
#include <pybind11/stl.h>

#include <array>
#include <utility>

#include "archive_bytes.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

using Xform = mvXform<2>;
using Rows = std::array<std::array<double, 2>, 2>;
using Point = std::pair<double, double>;

Xform make(const Rows& rows, Point trans) {
    return {{rows[0][0], rows[0][1], rows[1][0], rows[1][1]}, {trans.first, trans.second}};
}

Rows rowsOf(const Xform& xform) {
    const auto e = [&](int row, int column) { return xform.matrix().element(row, column); };
    return {{{e(0, 0), e(0, 1)}, {e(1, 0), e(1, 1)}}};
}

Point pointOf(const mvVector<2>& v) {
    return {v.x(), v.y()};
}

py::bytes storedXform(Xform& xform) {
    return stored([&](mvArchive& ar) { ar || xform; });
}

Xform loadedXform(const py::bytes& data) {
    Xform xform;
    loadFrom(data, [&](mvArchive& ar) { ar || xform; });
    return xform;
}

}  // namespace

void bindXform(py::module_& module) {
    py::class_<Xform> type(
        module, "Xform",
        "An affine transform of the plane: (x, y) goes to matrix * (x, y) + trans.\n"
        "\n"
        ">>> Xform([[2, 0], [0, 2]], (1, 0)) * (3, 4)\n"
        "(7.0, 8.0)\n");
    type.def(py::init(&make), "matrix"_a = Rows{{{1, 0}, {0, 1}}}, "trans"_a = Point(0, 0),
             "matrix is two rows of two numbers, trans is (x, y); the identity by default.")
        .def_property_readonly("matrix", &rowsOf, "The matrix, two rows of two floats.")
        .def_property_readonly(
            "trans", [](const Xform& self) { return pointOf(self.trans()); },
            "The translation (x, y).")
        .def("inverse", &Xform::inverse,
             "The transform that undoes this one. Raises mvExceptionWithString when there is none.")
        .def(py::self * py::self, "other"_a)
        .def(
            "__mul__",
            [](const Xform& self, Point point) {
                return pointOf(self * mvVector<2>(point.first, point.second));
            },
            "other"_a, py::is_operator())
        .def(py::self == py::self, "other"_a)
        .def("__repr__",
             [](const Xform& self) {
                 return "Xform(" + std::string(py::repr(py::cast(rowsOf(self)))) + ", " +
                        std::string(py::repr(py::cast(pointOf(self.trans())))) + ")";
             })
        .def("__copy__", [](const Xform& self) { return self; })
        .def(
            "__deepcopy__", [](const Xform& self, const py::dict&) { return self; }, "memo"_a)
        .def(py::pickle(&storedXform, &loadedXform));
    type.attr("__hash__") = py::none();
}
