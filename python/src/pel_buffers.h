// Numpy arrays as pel buffers of any pel type, and pel buffers as numpy arrays.
#pragma once

#include <filt/platform.h>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <memory>
#include <string>
#include <utility>
#include <variant>

using AnyPelBuffer =
    std::variant<mvPelBuffer<unsigned char>, mvPelBuffer<unsigned short>, mvPelBuffer<double>>;

/// What Python knows as a PelBuffer: a view of pels that may be read-only.
struct Image {
    AnyPelBuffer pels;
    bool writable = true;

    const mv_PelBuffer& view() const {
        return std::visit([](const auto& p) -> const mv_PelBuffer& { return p; }, pels);
    }
    mv_PelBuffer& view() {
        return std::visit([](auto& p) -> mv_PelBuffer& { return p; }, pels);
    }
};

/// The dtype of the pels.
pybind11::dtype dtypeOf(const Image& image);

/// The pels as an array, not copied; it keeps them alive.
template <class T>
pybind11::array arrayOf(const mvPelBuffer<T>& pels, bool writable = true);
pybind11::array arrayOf(const Image& image);

/// What an `__array__` gives for a view: the view itself, or a copy for another dtype or when
/// `copy` is True.
pybind11::object asNumpyAsks(const pybind11::array& view, const pybind11::object& dtype,
                             const pybind11::object& copy);

/// What follows names the argument that it takes when it refuses it.

/// A view of an array, or an unbound image of a dtype. Throws pybind11::type_error for what is
/// neither, for other than the three pel types, and for an array that is not two-dimensional or is
/// masked; pybind11::value_error for one whose memory is not laid out in rows.
Image viewOrUnbound(const pybind11::object& pels, const std::string& name);

/// A PelBuffer or an array as input; an array whose memory is not laid out in rows is copied.
Image inputImage(const pybind11::object& source, const std::string& name);

/// The argument `image` of a picture call; singles become doubles, which hold them all.
Image pictureOf(const pybind11::object& image);

/// Where pels go to: a new image, an array or a PelBuffer.
class Output {
  public:
    /// `out` is an array, a PelBuffer or a dtype. Throws what viewOrUnbound throws, and
    /// pybind11::value_error for pels that are read-only.
    Output(const pybind11::object& out, const std::string& name);

    /// The same; None is a new image of pels T, other pels throw pybind11::type_error.
    template <class T>
    static Output of(const pybind11::object& out, const std::string& name);

    AnyPelBuffer& pels() { return image_.pels; }
    template <class T>
    mvPelBuffer<T>& as() {
        return std::get<mvPelBuffer<T>>(image_.pels);
    }

    /// What the caller gets: the array or PelBuffer that was given, which then has the new pels,
    /// or a new array.
    pybind11::object result() const;

  private:
    pybind11::object given_;
    Image image_;
};

/// Throws pybind11::type_error unless the pels are T.
template <class T>
const mvPelBuffer<T>& requirePels(const Image& image, const std::string& name) {
    if (const auto* pels = std::get_if<mvPelBuffer<T>>(&image.pels)) return *pels;
    throw pybind11::type_error(name + ": Pels must be " +
                               std::string(pybind11::str(pybind11::dtype::of<T>())) + ", not " +
                               std::string(pybind11::str(dtypeOf(image))));
}

template <class T>
Output Output::of(const pybind11::object& out, const std::string& name) {
    Output output(out.is_none() ? pybind11::object(pybind11::dtype::of<T>()) : out, name);
    requirePels<T>(output.image_, name);
    return output;
}

/// Adds the class PelBuffer and its functions.
void bindPelBuffers(pybind11::module_& module);
