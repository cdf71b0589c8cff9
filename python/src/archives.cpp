// Archives as Python bytes.
#include "archives.h"

#include "archive_bytes.h"
#include "errors.h"
#include "filters.h"
#include "frequency_buffer.h"
#include "held_filter.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

py::bytes storedObject(mvPersistent& object) {
    return stored([&](mvArchive& ar) {
        mvPersistent* pointer = &object;
        ar || pointer;
    });
}

py::bytes dumps(const py::object& object) {
    if (py::isinstance<Buffer>(object)) {
        auto& buffer = object.cast<Buffer&>();
        const Uses uses({}, {&buffer.usage});
        return stored([&](mvArchive& ar) { ar || buffer.spectrum; });
    }
    if (py::isinstance<AnyFilter>(object)) {
        auto& filter = object.cast<AnyFilter&>();
        const Uses uses({}, {&filter.usage});
        return storedObject(filter.base());
    }
    const auto error = nativeError(object);
    if (error) return storedObject(*error);
    throw py::type_error("An archive holds frequency buffers, filters and errors, not " +
                         std::string(py::str(py::type::of(object).attr("__name__"))));
}

py::object loads(const py::bytes& data) {
    std::unique_ptr<mvPersistent> object;
    loadFrom(data, [&](mvArchive& ar) { object = mfLoad<mvPersistent>(ar); });
    if (auto* filter = dynamic_cast<mvFrequencyFilter*>(object.get())) return pythonFilter(*filter);
    if (const auto* error = dynamic_cast<const mvException*>(object.get())) {
        return pythonError(*error);
    }
    return py::none();
}

py::object loadsBuffer(const py::bytes& data) {
    auto buffer = std::make_unique<Buffer>();
    loadFrom(data, [&](mvArchive& ar) { ar || buffer->spectrum; });
    return py::cast(std::move(buffer));
}

}  // namespace

void bindArchives(py::module_& module) {
    module.def("dumps", &dumps, "obj"_a,
               "The archive of a frequency buffer, a filter or an error, the same bytes on every\n"
               "machine. Filters and errors come with their class, as the program mvfreq writes\n"
               "filters and loads() reads them; a buffer is the record that loads_buffer() reads.\n"
               "\n"
               ">>> loads(dumps(BadCoord('out')))\n"
               "BadCoord('out')\n");
    module.def("loads", &loads, "data"_a,
               "The filter or the error that an archive holds. Raises Truncated, BadValue,\n"
               "UnknownClass or UnknownVersion.");
    module.def("loads_buffer", &loadsBuffer, "data"_a,
               "The frequency buffer that an archive holds. Raises Truncated, BadValue or\n"
               "UnknownVersion.");
}
