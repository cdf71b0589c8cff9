// The Gabor and the Gabor-reject filter.
#include <pybind11/numpy.h>

#include <algorithm>

#include "filter_classes.h"
#include "filters.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

// A lobe filter; `dc` names the radius of the square around DC.
template <class Filter, class GetDc, class SetDc>
FilterClass<Filter> bindLobe(py::module_& module, const char* name, const char* doc, const char* dc,
                             GetDc getDc, SetDc setDc, const char* dcDoc) {
    FilterClass<Filter> type(module, name, doc);
    bindCommon(type);
    bindText(type, {"sigma", "plateau", "angle", "frequency", "size", dc});
    type.def(py::init([](Pair<double> sigma, Pair<double> plateau, double angle, double frequency,
                         Pair<long> size, long radius) {
                 return std::make_unique<Held<Filter>>(native(sigma), native(plateau),
                                                       mvRadian(angle), frequency, native(size),
                                                       radius);
             }),
             "sigma"_a, "plateau"_a, "angle"_a, "frequency"_a, "size"_a, py::arg(dc), kSetDoc)
        .def(
            "set",
            [](Held<Filter>& self, Pair<double> sigma, Pair<double> plateau, double angle,
               double frequency, Pair<long> size, long radius) {
                self.change().set(native(sigma), native(plateau), mvRadian(angle), frequency,
                                  native(size), radius);
            },
            "sigma"_a, "plateau"_a, "angle"_a, "frequency"_a, "size"_a, py::arg(dc), kSetDoc);
    bindParametersOf<mvLobeParameters>(type);
    bindPlace(type);
    parameter(
        type, "angle", [](Filter& f) { return f.angle().toDouble(); },
        [](Filter& f, double value) { f.angle(mvRadian(value)); },
        "The direction of the lobe from DC in radians, x to the right and y downwards.");
    parameter(
        type, "sigma", [](Filter& f) { return python(f.sigma()); },
        [](Filter& f, Pair<double> value) { f.sigma(native(value)); },
        "The Gaussian widths (along, across) in cycles per pixel, above 0.");
    parameter(
        type, "plateau", [](Filter& f) { return python(f.plateau()); },
        [](Filter& f, Pair<double> value) { f.plateau(native(value)); },
        "The half-sizes (along, across) of the flat top in cycles per pixel, 0 or more.");
    parameter(type, dc, getDc, setDc, dcDoc);
    measure(
        type, "support_width", [](Filter& f) { return f.supportWidth(); },
        "The columns of the stored patch; odd.");
    measure(
        type, "support_height", [](Filter& f) { return f.supportHeight(); },
        "The rows of the stored patch; odd.");
    return type;
}

py::array patchOf(Held<mvFrequencyFilterGabor>& held) {
    mvFrequencyFilterGabor& filter = held.read();
    py::array_t<float> patch({filter.supportHeight(), filter.supportWidth()});
    std::copy_n(filter.data(), patch.size(), patch.mutable_data());
    return patch;
}

}  // namespace

void bindLobeFilters(py::module_& module) {
    bindRemoving<mvFrequencyFilterGabor>([&](auto... dc) {
        bindLobe<mvFrequencyFilterGabor>(
            module, "FrequencyFilterGabor",
            "Keeps the frequencies in one lobe and clears the others. There is no mirror lobe, so\n"
            "the filtered image is complex.",
            dc...)
            .def_property_readonly("patch", &patchOf,
                                   "The stored gains as a new float32 array of support_height x\n"
                                   "support_width. Raises Uninitialized without response.");
    });
    bindProtecting<mvFrequencyFilterGaborReject>([&](auto... dc) {
        bindLobe<mvFrequencyFilterGaborReject>(
            module, "FrequencyFilterGaborReject",
            "Suppresses the frequencies in one lobe and leaves the others as they are.", dc...);
    });
}
