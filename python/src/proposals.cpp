// Filters proposed from pictures, and the waves of a picture.
#include "proposals.h"

#include <pybind11/stl.h>
#include <suggest/peaks.h>
#include <suggest/program_plane.h>
#include <suggest/suggest.h>

#include <algorithm>

#include "attention.h"
#include "filters.h"
#include "pel_buffers.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

template <class T>
mvPelBuffer<double> doubles(const mvPelBuffer<T>& pels) {
    if (!pels.isBound()) return {};
    mvPelBuffer<double> image(pels.width(), pels.height());
    for (long y = 0; y < pels.height(); ++y) {
        const T* row = pels.pointToRow(y);
        std::copy(row, row + pels.width(), image.pointToRow(y));
    }
    return image;
}

mvPelBuffer<double> doublesOf(const Image& image) {
    return std::visit([](const auto& pels) { return doubles(pels); }, image.pels);
}

// The largest pel there can be; 0 when there is none.
double whiteOf(const Image& image) {
    if (std::holds_alternative<mvPelBuffer<unsigned char>>(image.pels)) return 255;
    return std::holds_alternative<mvPelBuffer<unsigned short>>(image.pels) ? 65535 : 0;
}

py::list pythonFilters(const std::vector<mvFilterStep>& steps, mvPair<long> plane) {
    py::list list;
    for (const mvFilterStep& step : mfSingleSteps(steps)) {
        list.append(pythonFilter(*mfBuildFilter(step, plane)));
    }
    return list;
}

py::tuple described(const mvSuggestion& each) {
    return py::make_tuple(each.radius, each.levels, pythonFilters(each.steps, each.plane),
                          py::cast(each.arguments));
}

// The proposals, why there are none, and remarks.
py::tuple suggested(const std::vector<py::object>& sources, const std::vector<double>& radii,
                    std::optional<double> direction) {
    mvSuggestOptions options{.radii = radii, .direction = direction};
    std::vector<mvPelBuffer_const<double>> pictures;
    for (const py::object& source : sources) {
        const Image image = pictureOf(source);
        if (!pictures.empty() && whiteOf(image) != options.white) {
            throw py::type_error("images must have pels of one type");
        }
        options.white = whiteOf(image);
        pictures.push_back(doublesOf(image));
    }
    const mvSuggestions found = unlocked([&] { return mfSuggest(pictures, options); });
    py::list list;
    for (const mvSuggestion& each : found.filters) list.append(described(each));
    return py::make_tuple(list, found.refusal, py::cast(found.remarks));
}

// The plane that the program takes; a picture without pels has been refused.
mvPair<long> planeOf(const mvPelBuffer<double>& picture, const std::vector<mvFilterStep>& steps) {
    return mfProgramPlane({picture.width(), picture.height()}, mfFiltersReach(steps));
}

py::list peaks(const py::object& source, long most) {
    const mvPelBuffer<double> picture = doublesOf(pictureOf(source));
    const std::vector<mvPeak> found = unlocked([&] { return mfPeaks(picture, most); });
    py::list list;
    for (const mvPeak& each : found) {
        list.append(py::make_tuple(
            each.frequency, each.degrees, each.amplitude, each.decibels, each.group, each.order,
            pythonFilters(each.steps, planeOf(picture, each.steps)), py::cast(each.arguments)));
    }
    return list;
}

}  // namespace

void bindProposals(py::module_& module) {
    module.def("_suggest", &suggested, "images"_a, "radii"_a, "direction"_a,
               "What suggest gives, as tuples.");
    module.def("_peaks", &peaks, "image"_a, "most"_a, "What peaks gives, as tuples.");
}
