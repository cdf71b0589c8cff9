// What the bindings of all filter classes are made of.
#pragma once

#include <pybind11/operators.h>
#include <pybind11/stl.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "archive_bytes.h"
#include "held_filter.h"

/// A pair as Python has it, and the ways there and back.
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

/// The Python class of a filter class.
template <class Filter>
using FilterClass = pybind11::class_<Held<Filter>, AnyFilter>;

template <class Filter>
std::unique_ptr<Held<Filter>> copyOf(const Held<Filter>& held) {
    held.usage.requireUnchanging();
    return std::make_unique<Held<Filter>>(held.filter);
}

template <class Filter>
pybind11::bytes storedFilter(Held<Filter>& held) {
    const Uses uses({}, {&held.usage});
    return stored([&](mvArchive& ar) { ar || static_cast<mvPersistent&>(held.filter); });
}

template <class Filter>
std::unique_ptr<Held<Filter>> loadedFilter(const pybind11::bytes& data) {
    auto held = std::make_unique<Held<Filter>>();
    loadFrom(data, [&](mvArchive& ar) { ar || static_cast<mvPersistent&>(held->filter); });
    return held;
}

/// The text of a filter: its class with the named parameters, none for a filter without response.
inline std::string describeFilter(const pybind11::object& self,
                                  const std::vector<const char*>& parameters) {
    std::string text;
    try {
        for (const char* name : parameters) {
            if (!text.empty()) text += ", ";
            text += std::string(name) + "=" + std::string(pybind11::repr(self.attr(name)));
        }
    } catch (const pybind11::error_already_set&) {
        text.clear();
    }
    return std::string(pybind11::str(pybind11::type::of(self).attr("__name__"))) + "(" + text + ")";
}

/// What all filter classes have.
template <class Filter>
void bindCommon(FilterClass<Filter>& type) {
    type.def(pybind11::init<>(), "A filter without response.")
        .def("clone", &copyOf<Filter>, "A copy with its own response.")
        .def("__copy__", &copyOf<Filter>, "A copy with its own response.")
        .def(
            "__deepcopy__",
            [](const Held<Filter>& self, const pybind11::dict&) { return copyOf(self); },
            pybind11::arg("memo"), "A copy with its own response.")
        .def(
            "__eq__",
            [](Held<Filter>& self, Held<Filter>& other) { return self.read() == other.read(); },
            pybind11::arg("other"), pybind11::is_operator(),
            "Equal flags, parameters and responses; filters without response are equal.")
        .def(pybind11::pickle(&storedFilter<Filter>, &loadedFilter<Filter>));
    type.attr("__hash__") = pybind11::none();
}

/// The text of a filter, which makes it again.
template <class Filter>
void bindText(FilterClass<Filter>& type, std::vector<const char*> parameters) {
    type.def("__repr__", [parameters](const pybind11::object& self) {
        return describeFilter(self, parameters);
    });
}

/// A parameter with its getter and setter.
template <class Filter, class Get, class Set>
void parameter(FilterClass<Filter>& type, const char* name, Get get, Set set, const char* doc) {
    using Value = decltype(get(std::declval<Filter&>()));
    type.def_property(
        name, [get](Held<Filter>& self) { return get(self.read()); },
        [set](Held<Filter>& self, const Value& value) { set(self.change(), value); }, doc);
}

/// A property that is only read.
template <class Filter, class Get>
void measure(FilterClass<Filter>& type, const char* name, Get get, const char* doc) {
    type.def_property_readonly(
        name, [get](Held<Filter>& self) { return get(self.read()); }, doc);
}

inline constexpr const char* kSetDoc =
    "Builds the filter anew. Raises InvalidArgument for a parameter out of its range, InvalidSize\n"
    "for sides that are no powers of two, and then changes nothing.";

/// The parameters of a filter as one value.
template <class Parameters, class Filter>
void bindParametersOf(FilterClass<Filter>& type) {
    using pybind11::arg;
    type.def(pybind11::init(
                 [](const Parameters& wanted) { return std::make_unique<Held<Filter>>(wanted); }),
             arg("parameters"), kSetDoc)
        .def(
            "set", [](Held<Filter>& self, const Parameters& wanted) { self.change().set(wanted); },
            arg("parameters"), kSetDoc);
    measure(
        type, "parameters", [](Filter& f) { return f.parameters(); },
        "A copy of what the filter was built from. Raises Uninitialized without response.");
}

/// Where a ring or a lobe stands, and the buffers it is for.
template <class Filter>
void bindPlace(FilterClass<Filter>& type) {
    parameter(
        type, "frequency", [](Filter& f) { return f.frequency(); },
        [](Filter& f, double value) { f.frequency(value); },
        "The distance from DC of the ring, or of the lobe's centre, in cycles per pixel, 0.0 to "
        "0.5.");
    parameter(
        type, "size", [](Filter& f) { return python(f.size()); },
        [](Filter& f, Pair<long> value) { f.size(native(value)); },
        "The padded (width, height) of the buffers the filter is for.");
}

// The square around DC, under the name and with the rule of the filters that remove it or protect
// it: bind(name, get, set, doc).
inline constexpr const char* kRemovalDoc =
    "The radius R of the cleared square of 2 R - 1 coefficients a side around DC; 0 clears\n"
    "nothing, 1 only DC.";
inline constexpr const char* kProtectionDoc =
    "The radius R of the square of 2 R - 1 coefficients a side around DC that comes out as it\n"
    "went in; 0 protects nothing, 1 only DC.";

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
