// The band-pass and the band-reject filter.
#include "filter_classes.h"
#include "filters.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

// A ring filter; `dc` names the radius of the square around DC.
template <class Filter, class GetDc, class SetDc>
void bindRing(py::module_& module, const char* name, const char* doc, const char* dc, GetDc getDc,
              SetDc setDc, const char* dcDoc) {
    FilterClass<Filter> type(module, name, doc);
    bindCommon(type);
    bindText(type, {"sigma", "plateau", "frequency", "size", dc});
    type.def(py::init(
                 [](double sigma, double plateau, double frequency, Pair<long> size, long radius) {
                     return std::make_unique<Held<Filter>>(sigma, plateau, frequency, native(size),
                                                           radius);
                 }),
             "sigma"_a, "plateau"_a, "frequency"_a, "size"_a, py::arg(dc), kSetDoc)
        .def(
            "set",
            [](Held<Filter>& self, double sigma, double plateau, double frequency, Pair<long> size,
               long radius) { self.change().set(sigma, plateau, frequency, native(size), radius); },
            "sigma"_a, "plateau"_a, "frequency"_a, "size"_a, py::arg(dc), kSetDoc);
    bindParametersOf<mvRingParameters>(type);
    bindPlace(type);
    parameter(
        type, "sigma", [](Filter& f) { return f.sigma(); },
        [](Filter& f, double value) { f.sigma(value); },
        "The Gaussian width of the flanks in cycles per pixel, above 0.");
    parameter(
        type, "plateau", [](Filter& f) { return f.plateau(); },
        [](Filter& f, double value) { f.plateau(value); },
        "The half-width of the flat top in cycles per pixel, 0 or more.");
    parameter(type, dc, getDc, setDc, dcDoc);
    measure(
        type, "support_width", [](Filter& f) { return f.supportWidth(); },
        "The length of the stored profile in frequency bins; odd.");
}

}  // namespace

void bindRingFilters(py::module_& module) {
    bindRemoving<mvFrequencyFilterBandPass>([&](auto... dc) {
        bindRing<mvFrequencyFilterBandPass>(
            module, "FrequencyFilterBandPass",
            "Keeps the frequencies on a ring around DC and clears the others: 1 on the flat top,\n"
            "Gaussian flanks. A frequency of 0 makes a low-pass filter.\n"
            "\n"
            ">>> FrequencyFilterBandPass(sigma=0.01, plateau=0.0, frequency=0.125, size=(64, 64),\n"
            "...                         dc_removal_radius=1)\n"
            "FrequencyFilterBandPass(sigma=0.01, plateau=0.0, frequency=0.125, size=(64, 64), "
            "dc_removal_radius=1)\n",
            dc...);
    });
    bindProtecting<mvFrequencyFilterBandReject>([&](auto... dc) {
        bindRing<mvFrequencyFilterBandReject>(
            module, "FrequencyFilterBandReject",
            "Suppresses the frequencies on a ring around DC and leaves the others as they are.",
            dc...);
    });
}
