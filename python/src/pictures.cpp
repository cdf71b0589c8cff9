// The picture call.
#include <filt/freqfilt.h>

#include <pybind11/numpy.h>

#include <string>
#include <vector>

#include "attention.h"
#include "filters.h"
#include "frequency_buffer.h"
#include "held_filter.h"
#include "pel_buffers.h"

namespace py = pybind11;
using namespace py::literals;

namespace {

template <class Value>
Value chosen(const std::string& name, const char* parameter, const char* first, Value firstValue,
             const char* second, Value secondValue) {
    if (name == first) return firstValue;
    if (name == second) return secondValue;
    throw py::value_error(std::string(parameter) + " must be '" + first + "' or '" + second +
                          "', not '" + name + "'");
}

// None is the filter's reach; one number counts for both axes.
mvPair<long> marginOf(const py::object& margin) {
    if (margin.is_none()) return {-1, -1};
    try {
        if (PyIndex_Check(margin.ptr()) != 0) {
            const auto both = margin.cast<long>();
            return {both, both};
        }
        const auto [x, y] = margin.cast<std::pair<long, long>>();
        return {x, y};
    } catch (const py::cast_error&) {
        throw py::type_error("margin must be None, a whole number or two of them, not " +
                             std::string(py::repr(margin)));
    }
}

// One filter, or several in their order; it keeps them alive.
class FilterList {
  public:
    explicit FilterList(const py::object& filters)
        : kept_(isList(filters) ? py::tuple(filters) : py::make_tuple(filters)) {
        for (const py::handle each : kept_) add(each, isList(filters));
    }

    const std::vector<const mvFrequencyFilter*>& bases() const { return bases_; }
    const std::vector<Usage*>& usages() const { return usages_; }

    void requireUnchanging() const {
        for (const Usage* usage : usages_) usage->requireUnchanging();
    }

  private:
    static bool isList(const py::object& filters) {
        return py::isinstance<py::list>(filters) || py::isinstance<py::tuple>(filters);
    }

    void add(py::handle each, bool isInList) {
        if (!py::isinstance<AnyFilter>(each)) {
            const auto name = each.get_type().attr("__name__").cast<std::string>();
            throw py::type_error((isInList ? "the list filter must hold FrequencyFilters, not "
                                           : "filter must be a FrequencyFilter or a list of them, "
                                             "not ") +
                                 name);
        }
        auto& filter = each.cast<AnyFilter&>();
        bases_.push_back(&filter.base());
        usages_.push_back(&filter.usage);
    }

    py::tuple kept_;
    std::vector<const mvFrequencyFilter*> bases_;
    std::vector<Usage*> usages_;
};

py::object filterImage(const py::object& source, const py::object& filter, const py::object& out,
                       const std::string& border, const std::string& result, bool rescale,
                       const py::object& margin, int threads) {
    const FilterList filters(filter);
    const Image image = pictureOf(source);
    Output target(out, "out");
    const mvFilterImageOptions options{
        chosen(border, "border", "zero", mvBorder::zero, "mirror", mvBorder::mirror),
        chosen(result, "result", "magnitude", mvFilterResult::magnitude, "real",
               mvFilterResult::real),
        rescale, marginOf(margin), threads};
    const Uses uses({}, filters.usages());
    std::visit(
        [&](const auto& pels, auto& filtered) {
            unlocked([&] { mfFilterImage(pels, filters.bases(), filtered, options); });
        },
        image.pels, target.pels());
    return target.result();
}

py::tuple planeOf(const py::object& filter) {
    const FilterList filters(filter);
    filters.requireUnchanging();
    const mvPair<long> plane = mfFilterPlane(filters.bases());
    return py::make_tuple(plane.x, plane.y);
}

py::tuple reachOf(const py::object& filter) {
    const FilterList filters(filter);
    const Uses uses({}, filters.usages());
    const mvPair<long> reach = unlocked([&] { return mfFilterReach(filters.bases()); });
    return py::make_tuple(reach.x, reach.y);
}

}  // namespace

Image pictureOf(const py::object& image) {
    if (!py::isinstance<py::array_t<float>>(image)) return inputImage(image, "image");
    return inputImage(image.attr("astype")(py::dtype::of<double>()), "image");
}

void bindPictures(py::module_& module) {
    module.def(
        "filter_image", &filterImage, "image"_a, "filter"_a, "out"_a = "uint8", py::kw_only(),
        "border"_a = "mirror", "result"_a = "magnitude", "rescale"_a = false,
        "margin"_a = py::none(), "threads"_a = 1,
        "The filtered image: forward transform, filter and inverse transform in one call, for\n"
        "images of any size. A uint8, uint16, float32 or float64 array or a PelBuffer. A list or\n"
        "tuple of filters is applied in its order before the way back; all of them are built for\n"
        "one plane.\n"
        "\n"
        "An image that fits the plane of the filter is filtered in one piece, a longer one in\n"
        "tiles, each axis for itself. border says what stands around the image: 'mirror', its\n"
        "mirror image, or 'zero'. margin is how many pels around a tile are filtered with it and\n"
        "dropped, one number or (x, y); None takes the reach of the filter, or the sum of all, "
        "but\n"
        "at most a quarter of the plane. The number of threads changes nothing in the result.\n"
        "\n"
        "out is a dtype (a new array is returned), or an array or PelBuffer of the image's size\n"
        "that receives the pels and is returned; it may be the image. result is 'magnitude', or\n"
        "'real' for values with their sign in float64. rescale spreads the magnitudes over the\n"
        "whole range of integer pels.\n"
        "\n"
        "Raises, in this order, UnboundWindow for a PelBuffer without pels, InvalidArgument for a\n"
        "list without filters, Uninitialized for a filter without response, InvalidSize for\n"
        "filters of several planes and for a loaded filter that fits no plane, InvalidArgument "
        "for\n"
        "options that do not go together, InvalidSize for an output of another size.\n"
        "\n"
        ">>> import numpy as np\n"
        ">>> smooth = FrequencyFilterBandPass(sigma=0.1, plateau=0, frequency=0, size=(16, 16),\n"
        "...                                  dc_removal_radius=0)\n"
        ">>> filter_image(np.full((3, 50), 7, np.uint8), smooth)[1, 20:25]\n"
        "array([7, 7, 7, 7, 7], dtype=uint8)\n");
    module.def(
        "filter_plane", &planeOf, "filter"_a,
        "The padded (width, height) of the buffers that a filter, or each of a list, was built\n"
        "for. Raises Uninitialized without response, InvalidSize for several planes.");
    module.def(
        "filter_reach", &reachOf, "filter"_a,
        "How far a pel of the result depends on its surroundings, in pels along x and y: the\n"
        "margin that tiles need; for a list the sum. Costs an inverse transform for an image\n"
        "filter. Raises what filter_plane raises.");
}
