// Long calls without the interpreter lock, which Ctrl-C and a cancel function can stop.
#include "attention.h"

#include <limits>

namespace py = pybind11;

namespace {

// Between two looks for signals: waiting for the lock costs a switch of threads.
constexpr std::chrono::milliseconds kSignalInterval(10);

constexpr const char* kVariable = "cancel_function";

py::object contextVariable() {
    return py::module_::import("mvfreq._core").attr(kVariable);
}

// Keeps a cancel function that calls the library from being asked by its own calls.
class NoCancelFunction {
  public:
    NoCancelFunction() : variable_(contextVariable()), token_(variable_.attr("set")(py::none())) {}
    ~NoCancelFunction() {
        py::error_scope pending;
        try {
            variable_.attr("reset")(token_);
        } catch (py::error_already_set& error) {
            error.discard_as_unraisable("the cancel function's context");
        }
    }
    NoCancelFunction(const NoCancelFunction&) = delete;
    NoCancelFunction& operator=(const NoCancelFunction&) = delete;

  private:
    py::object variable_;
    py::object token_;
};

// The status that an answer stands for: an integer itself, anything else whether it is true.
int statusOf(const py::object& answer) {
    if (!PyLong_Check(answer.ptr())) return py::bool_(answer) ? 1 : 0;
    int overflow = 0;
    const long status = PyLong_AsLongAndOverflow(answer.ptr(), &overflow);
    constexpr int kLeast = std::numeric_limits<int>::min(), kMost = std::numeric_limits<int>::max();
    if (overflow < 0 || status < kLeast) return kLeast;
    if (overflow > 0 || status > kMost) return kMost;
    return static_cast<int>(status);
}

}  // namespace

Attention::Attention() : cancel_(contextVariable().attr("get")()), checked_(Clock::now()) {
    former_ = vsys_set_attention_handler(&poll, this);
    // A call made by a cancel function meets the handler of the call it is to cancel: what counts
    // then is the application's own.
    const bool nested = former_.handler == &poll;
    application_ = nested ? static_cast<Attention*>(former_.context)->application_ : former_;
}

Attention::~Attention() {
    vsys_set_attention_handler(former_.handler, former_.context);
}

int Attention::poll(void* attention) {
    return static_cast<Attention*>(attention)->check();
}

int Attention::check() {
    if (application_.handler != nullptr) {
        const int status = application_.handler(application_.context);
        if (status != 0) return status;
    }
    const Clock::time_point now = Clock::now();
    if (cancel_.is_none() && now - checked_ < kSignalInterval) return 0;
    checked_ = now;
    const py::gil_scoped_acquire lock;
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
    return cancel_.is_none() ? 0 : askCancel();
}

int Attention::askCancel() const {
    const NoCancelFunction quiet;
    return statusOf(cancel_());
}

void bindAttention(py::module_& module) {
    PyObject* const variable = PyContextVar_New(kVariable, py::none().ptr());
    if (variable == nullptr) throw py::error_already_set();
    module.attr(kVariable) = py::reinterpret_steal<py::object>(variable);
}
