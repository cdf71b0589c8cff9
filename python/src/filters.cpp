// The base of the filter classes, and the image filter.
#include "filters.h"

#include "attention.h"
#include "filter_classes.h"
#include "frequency_buffer.h"
#include "parameters.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

void bindImageFilter(py::module_& module) {
    using Filter = mvFrequencyFilterImage;
    FilterClass<Filter> type(
        module, "FrequencyFilterImage",
        "Multiplies by any frequency image, for instance the spectrum of a kernel\n"
        "image: a convolution.");
    bindCommon(type);
    type.def("__repr__", [](Held<Filter>& self) -> std::string {
        if (!self.read().isInitialized()) return "<FrequencyFilterImage without image>";
        return "<FrequencyFilterImage " + std::to_string(self.filter.supportWidth()) + " x " +
               std::to_string(self.filter.supportHeight()) + ">";
    });
    type.def(py::init(
                 [](const Buffer& image) { return std::make_unique<Held<Filter>>(image.read()); }),
             "image"_a, "Takes a copy of the image. Raises Uninitialized for one without data.")
        .def(
            "set_image",
            [](Held<Filter>& self, const Buffer& image) { self.change().setImage(image.read()); },
            "image"_a, "Takes a copy of the image. Raises Uninitialized for one without data.")
        .def_property_readonly(
            "image",
            [](Held<Filter>& self) {
                return std::make_unique<Buffer>(mvFrequencyBuffer(self.read().image()));
            },
            "A copy of the image; without data when there is none.");
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
        "The base of all filters: built once for one padded size, applied to any number of\n"
        "buffers of that size. A filter may be applied by several threads at once; a change that\n"
        "meets a call at work with the filter raises RuntimeError.")
        .def_property_readonly(
            "is_initialized",
            [](AnyFilter& self) {
                self.usage.requireUnchanging();
                return self.base().isInitialized();
            },
            "The flag that a filter carries through copies and archives: whether it was built.")
        .def_property_readonly(
            "has_response",
            [](AnyFilter& self) {
                self.usage.requireUnchanging();
                return self.base().hasResponse();
            },
            "Whether the filter can be applied.")
        .def(
            "apply", &apply, "src"_a, "dst"_a = py::none(),
            "Filters src in place, or makes dst the filtered src. A dst keeps its client\n"
            "transform and offset, and its image size becomes the padded size; a copy filtered in\n"
            "place keeps all of them. Raises Uninitialized for a buffer without data, then for a\n"
            "filter without response, InvalidSize for a buffer of another padded size.");
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
    bindParameters(module);
    bindBase(module);
    bindRingFilters(module);
    bindLobeFilters(module);
    bindImageFilter(module);
}
