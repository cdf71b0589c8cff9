// The library's exceptions as Python's.
#include "errors.h"

#include <sstream>
#include <string>

namespace py = pybind11;

namespace {

using Defs = mvFrequencyDefs;

template <class Error>
struct Row {
    const char* name;
};

// From the leaves of the class tree to its root: the first that fits is the error's own class.
const auto kWithMessage = std::make_tuple(
    Row<Defs::InvalidArgument>{"InvalidArgument"}, Row<Defs::Uninitialized>{"Uninitialized"},
    Row<Defs::InvalidSize>{"InvalidSize"}, Row<Defs::UnboundWindow>{"UnboundWindow"},
    Row<Defs::InvalidBuffer>{"InvalidBuffer"}, Row<Defs::BadCoord>{"BadCoord"},
    Row<mvArchive::Truncated>{"Truncated"}, Row<mvArchive::BadValue>{"BadValue"},
    Row<mvArchive::UnknownClass>{"UnknownClass"}, Row<mvArchive::WriteFailed>{"WriteFailed"},
    Row<mvExceptionWithString>{"mvExceptionWithString"});

py::object classNamed(const char* name) {
    return py::module_::import("mvfreq.errors").attr(name);
}

// An exception without a message is made without an argument.
template <class Error>
bool makeWithMessage(const mvException& error, Row<Error> row, py::object& made) {
    const auto* typed = dynamic_cast<const Error*>(&error);
    if (typed == nullptr) return false;
    const py::object type = classNamed(row.name);
    made = typed->message() == nullptr ? type() : type(py::str(typed->message()));
    return true;
}

template <class Error>
bool makeNative(const py::object& error, Row<Error> row, std::unique_ptr<Defs::Errors>& made) {
    if constexpr (std::is_base_of_v<Defs::Errors, Error>) {
        if (!py::isinstance(error, classNamed(row.name))) return false;
        const py::object message = error.attr("message");
        if (message.is_none()) {
            made = std::make_unique<Error>(nullptr);
        } else {
            made = std::make_unique<Error>(std::string(py::str(message)).c_str());
        }
        return true;
    }
    return false;
}

}  // namespace

py::object pythonError(const mvException& error) {
    py::object made;
    std::apply([&](auto... row) { (makeWithMessage(error, row, made) || ...); }, kWithMessage);
    if (made) return made;
    if (const auto* failed = dynamic_cast<const mvStatusException*>(&error)) {
        return classNamed("mvStatusException")(failed->status());
    }
    if (const auto* unknown = dynamic_cast<const mvArchive::UnknownVersion*>(&error)) {
        return classNamed("UnknownVersion")(unknown->text(), unknown->number());
    }
    std::ostringstream text;
    text << error;
    return classNamed("mvException")(text.str());
}

std::unique_ptr<Defs::Errors> nativeError(const py::object& error) {
    std::unique_ptr<Defs::Errors> made;
    std::apply([&](auto... row) { (makeNative(error, row, made) || ...); }, kWithMessage);
    return made;
}

void translateErrors() {
    py::register_exception_translator([](std::exception_ptr pending) {
        try {
            if (pending) std::rethrow_exception(pending);
        } catch (const mvException& error) {
            const py::object raised = pythonError(error);
            PyErr_SetObject(py::type::handle_of(raised).ptr(), raised.ptr());
        }
    });
}
