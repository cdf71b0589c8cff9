// The filter classes.
#include "filters.h"

#include <pybind11/numpy.h>
#include <pybind11/operators.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "archives.h"
#include "attention.h"
#include "frequency_buffer.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

template <class T>
using Pair = std::pair<T, T>;

template <class T>
mvPair<T> native(const Pair<T>& pair) {
    return {pair.first, pair.second};
}

template <class T>
Pair<T> python(const mvPair<T>& pair) {
    return {pair.x, pair.y};
}

template <class Filter>
using Class = py::class_<Held<Filter>, AnyFilter>;

template <class Filter>
std::unique_ptr<Held<Filter>> copyOf(const Held<Filter>& held) {
    held.usage.requireUnchanging();
    return std::make_unique<Held<Filter>>(held.filter);
}

template <class Filter>
py::bytes storedFilter(Held<Filter>& held) {
    const Uses uses({}, {&held.usage});
    return stored([&](mvArchive& ar) { ar || static_cast<mvPersistent&>(held.filter); });
}

template <class Filter>
std::unique_ptr<Held<Filter>> loadedFilter(const py::bytes& data) {
    auto held = std::make_unique<Held<Filter>>();
    loadFrom(data, [&](mvArchive& ar) { ar || static_cast<mvPersistent&>(held->filter); });
    return held;
}

// A filter without response shows no parameters.
std::string describe(const py::object& self, const std::vector<const char*>& parameters) {
    std::string text;
    try {
        for (const char* name : parameters) {
            if (!text.empty()) text += ", ";
            text += std::string(name) + "=" + std::string(py::repr(self.attr(name)));
        }
    } catch (const py::error_already_set&) {
        text.clear();
    }
    return std::string(py::str(py::type::of(self).attr("__name__"))) + "(" + text + ")";
}

// What all filter classes have.
template <class Filter>
void bindCommon(Class<Filter>& type, std::vector<const char*> parameters) {
    type.def(py::init<>(), "A filter without response.")
        .def("clone", &copyOf<Filter>, "A copy with its own response.")
        .def("__copy__", &copyOf<Filter>, "A copy with its own response.")
        .def(
            "__deepcopy__", [](const Held<Filter>& self, const py::dict&) { return copyOf(self); },
            "memo"_a, "A copy with its own response.")
        .def(
            "__eq__",
            [](Held<Filter>& self, Held<Filter>& other) { return self.read() == other.read(); },
            "other"_a, py::is_operator(),
            "Equal flags, parameters and responses; filters without response are equal.")
        .def("__repr__",
             [parameters](const py::object& self) { return describe(self, parameters); })
        .def(py::pickle(&storedFilter<Filter>, &loadedFilter<Filter>));
    type.attr("__hash__") = py::none();
}

// A parameter with its getter and setter.
template <class Filter, class Get, class Set>
void parameter(Class<Filter>& type, const char* name, Get get, Set set, const char* doc) {
    using Value = decltype(get(std::declval<Filter&>()));
    type.def_property(
        name, [get](Held<Filter>& self) { return get(self.read()); },
        [set](Held<Filter>& self, const Value& value) { set(self.change(), value); }, doc);
}

template <class Filter, class Get>
void measure(Class<Filter>& type, const char* name, Get get, const char* doc) {
    type.def_property_readonly(
        name, [get](Held<Filter>& self) { return get(self.read()); }, doc);
}

constexpr const char* kFrequencyDoc =
    "The distance from DC in cycles per pixel, 0.0 to 0.5: of the ring, or of the lobe's centre.";
constexpr const char* kSizeDoc = "The padded (width, height) of the buffers the filter is for.";
constexpr const char* kSetDoc =
    "Builds the filter anew. Raises InvalidArgument for a parameter out of its range, InvalidSize\n"
    "for sides that are no powers of two, and then changes nothing.";

// A ring filter; `dc` names the radius of the square around DC.
template <class Filter, class GetDc, class SetDc>
void bindRing(py::module_& module, const char* name, const char* doc, const char* dc, GetDc getDc,
              SetDc setDc, const char* dcDoc) {
    Class<Filter> type(module, name, doc);
    bindCommon(type, {"sigma", "plateau", "frequency", "size", dc});
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
    parameter(
        type, "frequency", [](Filter& f) { return f.frequency(); },
        [](Filter& f, double value) { f.frequency(value); }, kFrequencyDoc);
    parameter(
        type, "sigma", [](Filter& f) { return f.sigma(); },
        [](Filter& f, double value) { f.sigma(value); },
        "The Gaussian width of the flanks in cycles per pixel, above 0.");
    parameter(
        type, "plateau", [](Filter& f) { return f.plateau(); },
        [](Filter& f, double value) { f.plateau(value); },
        "The half-width of the flat top in cycles per pixel, 0 or more.");
    parameter(
        type, "size", [](Filter& f) { return python(f.size()); },
        [](Filter& f, Pair<long> value) { f.size(native(value)); }, kSizeDoc);
    parameter(type, dc, getDc, setDc, dcDoc);
    measure(
        type, "support_width", [](Filter& f) { return f.supportWidth(); },
        "The length of the stored profile in frequency bins; odd.");
}

// A lobe filter; likewise.
template <class Filter, class GetDc, class SetDc>
Class<Filter> bindLobe(py::module_& module, const char* name, const char* doc, const char* dc,
                       GetDc getDc, SetDc setDc, const char* dcDoc) {
    Class<Filter> type(module, name, doc);
    bindCommon(type, {"sigma", "plateau", "angle", "frequency", "size", dc});
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
    parameter(
        type, "frequency", [](Filter& f) { return f.frequency(); },
        [](Filter& f, double value) { f.frequency(value); }, kFrequencyDoc);
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
    parameter(
        type, "size", [](Filter& f) { return python(f.size()); },
        [](Filter& f, Pair<long> value) { f.size(native(value)); }, kSizeDoc);
    parameter(type, dc, getDc, setDc, dcDoc);
    measure(
        type, "support_width", [](Filter& f) { return f.supportWidth(); },
        "The columns of the stored patch; odd.");
    measure(
        type, "support_height", [](Filter& f) { return f.supportHeight(); },
        "The rows of the stored patch; odd.");
    return type;
}

constexpr const char* kRemovalDoc =
    "The radius R of the cleared square of 2 R - 1 coefficients a side around DC; 0 clears\n"
    "nothing, 1 DC alone.";
constexpr const char* kProtectionDoc =
    "The radius R of the square of 2 R - 1 coefficients a side around DC that comes out as it\n"
    "went in; 0 protects nothing, 1 DC alone.";

template <class Filter, class Bind>
auto bindRemoving(Bind bind) {
    return bind(
        "dc_removal_radius", [](Filter& f) { return f.dcRemovalRadius(); },
        [](Filter& f, long value) { f.dcRemovalRadius(value); }, kRemovalDoc);
}

template <class Filter, class Bind>
auto bindProtecting(Bind bind) {
    return bind(
        "dc_protection_radius", [](Filter& f) { return f.dcProtectionRadius(); },
        [](Filter& f, long value) { f.dcProtectionRadius(value); }, kProtectionDoc);
}

py::array patchOf(Held<mvFrequencyFilterGabor>& held) {
    mvFrequencyFilterGabor& filter = held.read();
    py::array_t<float> patch({filter.supportHeight(), filter.supportWidth()});
    std::copy_n(filter.data(), patch.size(), patch.mutable_data());
    return patch;
}

void bindImageFilter(py::module_& module) {
    using Filter = mvFrequencyFilterImage;
    Class<Filter> type(module, "FrequencyFilterImage",
                       "Multiplies by any frequency image, for instance the spectrum of a kernel\n"
                       "image: a convolution.");
    bindCommon(type, {"support_width", "support_height"});
    type.def("__repr__", [](const py::object& self) {
        const bool built = self.attr("is_initialized").cast<bool>();
        return "<FrequencyFilterImage " + std::string(built ? "" : "without image") + ">";
    });
    type.def(py::init(
                 [](const Buffer& image) { return std::make_unique<Held<Filter>>(image.read()); }),
             "image"_a, "Takes a copy of the image. Raises Uninitialized for one without data.")
        .def(
            "set_image",
            [](Held<Filter>& self, const Buffer& image) { self.change().setImage(image.read()); },
            "image"_a, "Takes a copy of the image. Raises Uninitialized for one without data.");
    measure(
        type, "support_width", [](Filter& f) { return f.supportWidth(); },
        "The padded width of the image.");
    measure(
        type, "support_height", [](Filter& f) { return f.supportHeight(); },
        "The padded height of the image.");
}

void apply(AnyFilter& filter, Buffer& src, const py::object& dst) {
    if (dst.is_none()) {
        const Uses uses({&src.usage}, {&filter.usage});
        unlocked([&] { filter.base().apply(src.spectrum); });
        return;
    }
    const Destination out(dst);
    const Uses uses({&out.buffer().usage}, {&filter.usage, &src.usage});
    unlocked([&] { filter.base().apply(src.spectrum, out.spectrum()); });
}

void bindBase(py::module_& module) {
    py::class_<AnyFilter>(
        module, "FrequencyFilter",
        "The base of all filters: built once for one padded size, applied to any number of "
        "buffers\n"
        "of that size. A filter may be applied by several threads at once; a change that meets a\n"
        "call at work with the filter raises RuntimeError.")
        .def_property_readonly(
            "is_initialized",
            [](AnyFilter& self) {
                self.usage.requireUnchanging();
                return self.base().isInitialized();
            },
            "Whether the filter was built.")
        .def(
            "apply", &apply, "src"_a, "dst"_a = py::none(),
            "Filters src in place, or makes dst the filtered src. A dst keeps its client "
            "transform\n"
            "and offset, and its image size becomes the padded size; a copy filtered in place\n"
            "keeps all of them. Raises Uninitialized for a buffer without data, then for a filter\n"
            "without response, InvalidSize for a buffer of another padded size.");
}

template <class Filter>
bool take(mvFrequencyFilter& filter, py::object& taken) {
    auto* typed = dynamic_cast<Filter*>(&filter);
    if (typed == nullptr) return false;
    taken = py::cast(std::make_unique<Held<Filter>>(std::move(*typed)));
    return true;
}

}  // namespace

py::object pythonFilter(mvFrequencyFilter& filter) {
    py::object taken = py::none();
    take<mvFrequencyFilterBandPass>(filter, taken) ||
        take<mvFrequencyFilterBandReject>(filter, taken) ||
        take<mvFrequencyFilterGabor>(filter, taken) ||
        take<mvFrequencyFilterGaborReject>(filter, taken) ||
        take<mvFrequencyFilterImage>(filter, taken);
    return taken;
}

void bindFilters(py::module_& module) {
    bindBase(module);
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
    bindImageFilter(module);
}
