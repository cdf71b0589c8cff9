// Element-wise arithmetic of frequency buffers, as functions and as operators.
#include <string>

#include "attention.h"
#include "frequency_buffer.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

using Combine = void (*)(const mvFrequencyBuffer&, const mvFrequencyBuffer&, mvFrequencyBuffer&);
using Accumulate = void (*)(const mvFrequencyBuffer&, mvFrequencyBuffer&);

// One operation under its names: function, operator, operator in place.
template <Combine combine, Accumulate accumulate>
void bindOperation(py::module_& module, py::object buffer, const char* function,
                   const std::string& op, const char* doc) {
    module.def(
        function,
        [](const Buffer& a, const Buffer& b, const py::object& result) {
            const Destination out(result, "result");
            const Uses uses({&out.buffer().usage}, {&a.usage, &b.usage});
            unlocked([&] { combine(a.spectrum, b.spectrum, out.spectrum()); });
            return out.result();
        },
        "a"_a, "b"_a, "result"_a = py::none(), doc);

    auto type = py::class_<Buffer>(std::move(buffer));
    const py::object call = module.attr(function);
    type.def(("__" + op + "__").c_str(),
             [call](const py::object& self, const Buffer& other) { return call(self, other); },
             "other"_a, py::is_operator());
    type.def(("__i" + op + "__").c_str(),
             [](const py::object& self, const Buffer& other) {
                 auto& dst = self.cast<Buffer&>();
                 const Uses uses({&dst.usage}, {&other.usage});
                 unlocked([&] { accumulate(other.spectrum, dst.spectrum); });
                 return self;
             },
             "other"_a, py::is_operator());
}

py::object conjugate(Buffer& src, const py::object& dst) {
    if (py::isinstance<Buffer>(dst) && &dst.cast<Buffer&>() == &src) {
        const Uses uses({&src.usage}, {});
        unlocked([&] { mfFrequencyConjugate(src.spectrum); });
        return dst;
    }
    const Destination out(dst);
    const Uses uses({&out.buffer().usage}, {&src.usage});
    unlocked([&] { mfFrequencyConjugate(src.spectrum, out.spectrum()); });
    return out.result();
}

}  // namespace

void bindArithmetic(py::module_& module) {
    const py::object buffer = module.attr("FrequencyBuffer");
    bindOperation<&mfFrequencyAdd, &mfFrequencyAdd>(
        module, buffer, "frequency_add", "add",
        "a + b of the whole planes, into result or a new buffer with the other properties of a;\n"
        "a + b and a += b do the same. Raises Uninitialized, InvalidBuffer, then InvalidSize for\n"
        "padded sizes that differ.");
    bindOperation<&mfFrequencySubtract, &mfFrequencySubtract>(
        module, buffer, "frequency_subtract", "sub",
        "a - b of the whole planes, into result or a new buffer; a - b and a -= b do the same.");
    bindOperation<&mfFrequencyMultiply, &mfFrequencyMultiply>(
        module, buffer, "frequency_multiply", "mul",
        "The complex product of the whole planes, a convolution of the images, into result or a\n"
        "new buffer; a * b and a *= b do the same.");
    module.def("frequency_conjugate", &conjugate, "src"_a, "dst"_a = py::none(),
               "The conjugate of a plane, into dst or a new buffer; in place when dst is src.\n"
               "Raises Uninitialized, then InvalidBuffer.\n"
               "\n"
               ">>> buffer = FrequencyBuffer(2, 1)\n"
               ">>> buffer.put(1, 0, 3 + 4j)\n"
               ">>> frequency_conjugate(buffer).get(1, 0)\n"
               "(3-4j)\n");
}
