// The frequency buffer with what Python needs beside it.
#pragma once

#include <filt/fft.h>

#include <pybind11/pybind11.h>

#include <memory>
#include <string>

#include "usage.h"

/// The views of a plane: how many there are, and the plane itself once its buffer has let go of it.
struct Views {
    int held = 0;
    mvFrequencyBuffer plane;
};

/// What Python knows as a FrequencyBuffer.
struct Buffer {
    Buffer() = default;
    explicit Buffer(mvFrequencyBuffer&& plane) : spectrum(std::move(plane)) {}

    mvFrequencyBuffer spectrum;
    mutable Usage usage;
    std::shared_ptr<Views> views = std::make_shared<Views>();

    /// Throws pybind11::buffer_error (BufferError) while a view of the plane is held.
    void requireNoViews() const;

    /// For short calls, which keep the interpreter lock.
    const mvFrequencyBuffer& read() const {
        usage.requireUnchanging();
        return spectrum;
    }
    mvFrequencyBuffer& change() {
        usage.requireUnused();
        return spectrum;
    }
};

/// Where a call puts a spectrum: the buffer that the caller gave, which must not have views, or a
/// new one for None.
class Destination {
  public:
    explicit Destination(const pybind11::object& given, const std::string& name = "dst");

    Buffer& buffer() const { return *buffer_; }
    mvFrequencyBuffer& spectrum() const { return buffer_->spectrum; }
    pybind11::object result() const { return object_; }

  private:
    pybind11::object object_;
    Buffer* buffer_;
};

/// Add the class FrequencyBuffer, the transforms and the arithmetic.
void bindFrequencyBuffer(pybind11::module_& module);
void bindTransforms(pybind11::module_& module);
void bindArithmetic(pybind11::module_& module);
