// What archives store as Python bytes, and what they load from them.
#pragma once

#include <base/archive.h>

#include <pybind11/pybind11.h>

#include <istream>
#include <memory>
#include <sstream>
#include <streambuf>

#include "attention.h"

/// The bytes that `exchange(archive)` stores.
template <class Exchange>
pybind11::bytes stored(Exchange exchange) {
    std::ostringstream out;
    unlocked([&] {
        mvArchive archive(out);
        exchange(archive);
    });
    const auto text = out.view();
    return {text.data(), text.size()};
}

/// A stream buffer that reads memory where it is.
class MemoryReader : public std::streambuf {
  public:
    explicit MemoryReader(const pybind11::bytes& data) {
        char* first = nullptr;
        pybind11::ssize_t size = 0;
        if (PyBytes_AsStringAndSize(data.ptr(), &first, &size) != 0) {
            throw pybind11::error_already_set();
        }
        setg(first, first, first + size);
    }
};

/// Has `exchange(archive)` load from the bytes.
template <class Exchange>
void loadFrom(const pybind11::bytes& data, Exchange exchange) {
    MemoryReader reader(data);
    unlocked([&] {
        std::istream in(&reader);
        mvArchive archive(in);
        exchange(archive);
    });
}
