// Numpy arrays as pel buffers of any pel type, and pel buffers as numpy arrays.
#include "pel_buffers.h"

namespace py = pybind11;

namespace {

[[noreturn]] void throwPelType(const std::string& name, const py::object& dtype) {
    throw py::type_error(name + ": Pels must be uint8, uint16 or float64, not " +
                         std::string(py::str(dtype)));
}

std::string typeName(const py::object& object) {
    return py::str(py::type::handle_of(object).attr("__name__"));
}

// What a mask hides has no value that a transform could take.
void requireUnmasked(const py::array& array, const std::string& name) {
    if (!py::isinstance(array, py::module_::import("numpy").attr("ma").attr("MaskedArray"))) return;
    throw py::type_error(name +
                         ": An image must not be a masked array; fill it before, as by "
                         "filled(0)");
}

// Calls `use` with a value of each pel type until it answers true.
template <class Use>
bool anyPelType(Use use) {
    return use(static_cast<unsigned char>(0)) || use(static_cast<unsigned short>(0)) || use(0.0);
}

bool isImage(const py::handle& object) {
    return py::isinstance<Image>(object);
}

// Keeps a Python object alive from places that do not hold the interpreter lock.
std::shared_ptr<void> ownerOf(py::object object) {
    return {object.release().ptr(), [](void* pointer) {
                if (!Py_IsInitialized()) return;
                const py::gil_scoped_acquire lock;
                Py_DECREF(static_cast<PyObject*>(pointer));
            }};
}

// The step from row to row in pels, or 0 when the memory is not laid out in rows of pels.
template <class T>
long rowStep(const py::array& array) {
    constexpr auto kSize = static_cast<py::ssize_t>(sizeof(T));
    const py::ssize_t height = array.shape(0), width = array.shape(1);
    const bool aligned = reinterpret_cast<std::uintptr_t>(array.data()) % alignof(T) == 0;
    if (!aligned || (width > 1 && array.strides(1) != kSize)) return 0;
    if (height <= 1) return width;
    const py::ssize_t step = array.strides(0);
    return step % kSize == 0 && step / kSize >= width ? step / kSize : 0;
}

// An empty array has no rows to step; the pel buffer itself refuses it.
template <class T>
mvPelBuffer<T> bound(const py::array& array, long step) {
    auto* const pels = const_cast<T*>(static_cast<const T*>(array.data()));
    return {pels, array.shape(1), array.shape(0), step, ownerOf(array)};
}

enum class Layout { required, copied };

Image imageOf(py::array array, Layout layout, const std::string& name) {
    requireUnmasked(array, name);
    if (array.ndim() != 2) {
        throw py::type_error(name + ": An image must have two dimensions, rows and columns, not " +
                             std::to_string(array.ndim()));
    }
    Image image;
    const bool found = anyPelType([&](auto pel) {
        using T = decltype(pel);
        if (!py::isinstance<py::array_t<T>>(array)) return false;
        image.writable = array.writeable();
        if (rowStep<T>(array) == 0 && array.size() != 0) {
            if (layout == Layout::required) {
                throw py::value_error(
                    name + ": The array's memory is not laid out in rows of adjacent pels");
            }
            array = py::array_t<T, py::array::c_style>(array.attr("copy")());
            image.writable = false;
        }
        image.pels = bound<T>(array, rowStep<T>(array));
        return true;
    });
    if (!found) throwPelType(name, array.dtype());
    return image;
}

// An unbound image of a dtype, or of what numpy makes one of.
Image unboundImage(const py::object& type, const std::string& name) {
    py::dtype dtype;
    try {
        dtype = py::dtype::from_args(type);
    } catch (const py::error_already_set&) {
        throw py::type_error(name +
                             ": An image must be a numpy array, a PelBuffer or a dtype, not " +
                             typeName(type));
    }
    Image image;
    const bool found = anyPelType([&](auto pel) {
        using T = decltype(pel);
        if (!dtype.equal(py::dtype::of<T>())) return false;
        image.pels = mvPelBuffer<T>();
        return true;
    });
    if (!found) throwPelType(name, dtype);
    return image;
}

}  // namespace

py::dtype dtypeOf(const Image& image) {
    return std::visit(
        []<class T>(const mvPelBuffer<T>&) -> py::dtype { return py::dtype::of<T>(); }, image.pels);
}

template <class T>
py::array arrayOf(const mvPelBuffer<T>& pels, bool writable) {
    auto kept = std::make_unique<mvPelBuffer<T>>(pels);
    const py::capsule owner(kept.get(),
                            [](void* pointer) { delete static_cast<mvPelBuffer<T>*>(pointer); });
    kept.release();
    constexpr auto kSize = static_cast<py::ssize_t>(sizeof(T));
    py::array array(py::dtype::of<T>(), {pels.height(), pels.width()},
                    {kSize * pels.rowUpdate(), kSize}, pels.pointToOffset(), owner);
    if (!writable) array.attr("setflags")(py::arg("write") = false);
    return array;
}
template py::array arrayOf(const mvPelBuffer<unsigned char>&, bool);
template py::array arrayOf(const mvPelBuffer<unsigned short>&, bool);
template py::array arrayOf(const mvPelBuffer<double>&, bool);

py::array arrayOf(const Image& image) {
    return std::visit([&](const auto& pels) { return arrayOf(pels, image.writable); }, image.pels);
}

py::object asNumpyAsks(const py::array& view, const py::object& dtype, const py::object& copy) {
    const bool copies = !copy.is_none() && py::bool_(copy);
    const py::object wanted = dtype.is_none() ? py::object(view.dtype()) : dtype;
    return view.attr("astype")(wanted, py::arg("copy") = copies);
}

Image viewOrUnbound(const py::object& pels, const std::string& name) {
    if (py::isinstance<py::array>(pels)) return imageOf(pels, Layout::required, name);
    return unboundImage(pels, name);
}

Image inputImage(const py::object& source, const std::string& name) {
    if (isImage(source)) return source.cast<Image&>();
    if (py::isinstance<py::array>(source)) return imageOf(source, Layout::copied, name);
    throw py::type_error(name + ": An image must be a numpy array or a PelBuffer, not " +
                         typeName(source));
}

Output::Output(const py::object& out, const std::string& name) {
    if (isImage(out)) {
        image_ = out.cast<Image&>();
        given_ = out;
    } else {
        image_ = viewOrUnbound(out, name);
        if (py::isinstance<py::array>(out)) given_ = out;
    }
    if (!image_.writable) throw py::value_error(name + ": The output's pels are read-only");
}

py::object Output::result() const {
    if (!given_) return arrayOf(image_);
    if (isImage(given_)) given_.cast<Image&>() = image_;
    return given_;
}
