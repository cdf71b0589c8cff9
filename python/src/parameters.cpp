// What ring and lobe filters are built from.
#include "parameters.h"

#include <string>
#include <vector>

#include "filter_classes.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

template <class P, class T>
void field(py::class_<P>& type, const char* name, mvPair<T> P::*member, const char* doc) {
    type.def_property(
        name, [member](const P& self) { return python(self.*member); },
        [member](P& self, Pair<T> value) { self.*member = native(value); }, doc);
}

// What both have, whatever their parameters mean.
template <class P>
void bindCommonFields(py::class_<P>& type) {
    type.def_readwrite("frequency", &P::frequency,
                       "The distance from DC of the ring, or of the lobe's centre, in cycles per "
                       "pixel, 0.0 to 0.5.");
    field(type, "size", &P::size, "The padded (width, height) of the buffers to filter.");
    type.def_readwrite("dc_radius", &P::dcRadius,
                       "The radius R of the square of 2 R - 1 coefficients a side around DC that\n"
                       "is removed or protected; 0 for none.");
}

// A value with named fields, which its text and its pickle list.
template <class P>
void bindValue(py::class_<P>& type, std::vector<const char*> fields) {
    type.def("__repr__", [fields](const py::object& self) { return describeFilter(self, fields); })
        .def("__reduce__",
             [fields](const py::object& self) {
                 py::list values;
                 for (const char* name : fields) values.append(self.attr(name));
                 return py::make_tuple(py::type::of(self), py::tuple(values));
             })
        .def(
            "__eq__", [](const P& self, const P& other) { return self == other; }, "other"_a,
            py::is_operator(), "Equal when all parameters are.")
        .def(
            "__copy__", [](const P& self) { return self; }, "A copy.")
        .def(
            "__deepcopy__", [](const P& self, const py::dict&) { return self; }, "memo"_a,
            "A copy.");
    type.attr("__hash__") = py::none();
}

void bindRingParameters(py::module_& module) {
    using P = mvRingParameters;
    py::class_<P> type(module, "RingParameters",
                       "What a ring filter is built from, to be kept, changed and set at once.\n"
                       "\n"
                       ">>> wanted = RingParameters(sigma=0.01, frequency=0.125, size=(64, 64))\n"
                       ">>> ring = FrequencyFilterBandPass(wanted)\n"
                       ">>> wanted.plateau = 0.02\n"
                       ">>> ring.set(wanted)\n"
                       ">>> ring.parameters == wanted\n"
                       "True\n");
    type.def(py::init(
                 [](double sigma, double plateau, double frequency, Pair<long> size, long radius) {
                     return P{sigma, plateau, frequency, native(size), radius};
                 }),
             "sigma"_a = 0.0, "plateau"_a = 0.0, "frequency"_a = 0.0, "size"_a = Pair<long>(0, 0),
             "dc_radius"_a = 0, "Nothing is checked before a filter is built.")
        .def_readwrite("sigma", &P::sigma,
                       "The Gaussian width of the flanks in cycles per pixel, above 0.")
        .def_readwrite("plateau", &P::plateau,
                       "The half-width of the flat top in cycles per pixel, 0 or more.");
    bindCommonFields(type);
    bindValue(type, {"sigma", "plateau", "frequency", "size", "dc_radius"});
}

void bindLobeParameters(py::module_& module) {
    using P = mvLobeParameters;
    py::class_<P> type(module, "LobeParameters",
                       "What a lobe filter is built from, to be kept, changed and set at once.");
    type.def(py::init([](Pair<double> sigma, Pair<double> plateau, double angle, double frequency,
                         Pair<long> size, long radius) {
                 return P{native(sigma), native(plateau), mvRadian(angle),
                          frequency,     native(size),    radius};
             }),
             "sigma"_a = Pair<double>(0, 0), "plateau"_a = Pair<double>(0, 0), "angle"_a = 0.0,
             "frequency"_a = 0.0, "size"_a = Pair<long>(0, 0), "dc_radius"_a = 0,
             "Nothing is checked before a filter is built.");
    field(type, "sigma", &P::sigma,
          "The Gaussian widths (along, across) in cycles per pixel, above 0.");
    field(type, "plateau", &P::plateau,
          "The half-sizes (along, across) of the flat top in cycles per pixel, 0 or more.");
    type.def_property(
        "angle", [](const P& self) { return self.angle.toDouble(); },
        [](P& self, double angle) { self.angle = mvRadian(angle); },
        "The direction of the lobe from DC in radians, x to the right and y downwards.");
    bindCommonFields(type);
    bindValue(type, {"sigma", "plateau", "angle", "frequency", "size", "dc_radius"});
}

}  // namespace

void bindParameters(py::module_& module) {
    bindRingParameters(module);
    bindLobeParameters(module);
}
