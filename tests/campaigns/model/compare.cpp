// What the library's objects and the model's have to say of each other.
#include "campaigns/model/compare.h"

#include <filt/freqfilt/internal/filter_access.h>

#include <bit>
#include <cstring>
#include <sstream>
#include <utility>

#include "campaigns/model/errors.h"
#include "campaigns/model/images.h"
#include "support/archive_bytes.h"
#include "support/buffer_probe.h"
#include "support/thrown.h"

namespace model {
namespace {

Xform xformOf(const mv2XformCache& cache) {
    if (!cache.isSet()) return {};
    const mvXform<2> xform = cache.linearXform().xform();
    const mvMatrix<2> m = xform.matrix();
    return {true,
            {m.element(0, 0), m.element(0, 1), m.element(1, 0), m.element(1, 1), xform.trans().x(),
             xform.trans().y()}};
}

std::string textOf(const Xform& xform) {
    if (!xform.isSet) return "none";
    std::ostringstream out;
    for (const double value : xform.values) out << value << ' ';
    return out.str();
}

std::string textOf(double value) {
    std::ostringstream out;
    out << std::hexfloat << value;
    return out.str();
}

// Collects the first difference of one object.
class Report {
  public:
    explicit Report(std::string name) : name_(std::move(name)) {}

    void same(const char* what, long model, long library) {
        if (model != library) note(what, std::to_string(model), std::to_string(library));
    }
    void same(const char* what, const std::string& model, const std::string& library) {
        if (model != library) note(what, model, library);
    }
    void same(const char* what, const Xform& model, const Xform& library) {
        if (!(model == library)) note(what, textOf(model), textOf(library));
    }
    /// By bits; a NaN is a NaN.
    template <class T>
    void sameValue(std::size_t i, T model, T library) {
        if (std::memcmp(&model, &library, sizeof(T)) == 0) return;
        if (model != model && library != library) return;
        const std::string what = "value " + std::to_string(i);
        note(what.c_str(), textOf(static_cast<double>(model)),
             textOf(static_cast<double>(library)));
    }
    bool isEmpty() const { return text_.empty(); }
    const std::string& text() const { return text_; }

  private:
    void note(const char* what, const std::string& model, const std::string& library) {
        if (text_.empty())
            text_ = name_ + ", " + what + ": " + model + " expected, " + library + " found";
    }

    std::string name_;
    std::string text_;
};

void compareElements(Report& report, Buffer& b, const mvFrequencyBuffer& found) {
    const float* floats = support::dataOf(found);
    const auto count = static_cast<std::size_t>(2 * b.width * b.height);
    if (b.anyElements) std::copy_n(floats, count, b.storage.begin());
    b.anyElements = false;
    if (std::memcmp(floats, b.storage.data(), count * sizeof(float)) == 0) return;
    for (std::size_t i = 0; i < count; ++i) report.sameValue(i, b.storage[i], floats[i]);
    // NaNs may have other bits, which archives show.
    std::copy_n(floats, count, b.storage.begin());
}

std::string textOfBand(bool has, long first, long last) {
    return has ? std::to_string(first) + " to " + std::to_string(last) : "none";
}

std::string bandOf(const mvFrequencyBuffer& b) {
    const std::optional<mvPair<long>> band = b.band();
    return band ? textOfBand(true, band->x, band->y) : textOfBand(false, 0, 0);
}

void compareFields(Report& report, const Buffer& b, const mvFrequencyBuffer& found) {
    report.same("data", b.hasData, found.hasData());
    report.same("inverse", b.hasData && b.inverseComputed, found.inverseComputed());
    report.same("image width", b.hasData ? b.imageWidth : 0, found.imageSize().x);
    report.same("image height", b.hasData ? b.imageHeight : 0, found.imageSize().y);
    report.same("x", b.hasData ? b.x : 0, found.offset().x);
    report.same("y", b.hasData ? b.y : 0, found.offset().y);
    report.same("transform", b.hasData ? b.xform : Xform{}, xformOf(found.xformCache()));
    report.same("band", textOfBand(b.hasData && b.masked, b.maskedMiny, b.maskedMaxy),
                bandOf(found));
}

std::string compareBuffer(const std::string& name, Buffer& b, const mvFrequencyBuffer& found) {
    Report report(name);
    compareFields(report, b, found);
    if (!report.isEmpty()) return report.text();
    if (!b.hasData) {
        report.same("width", support::kNoData, support::thrownBy([&] { found.width(); }));
        report.same("height", support::kNoData, support::thrownBy([&] { found.height(); }));
        return report.text();
    }
    report.same("width", b.width, found.width());
    report.same("height", b.height, found.height());
    if (report.isEmpty()) compareElements(report, b, found);
    return report.text();
}

// After a poll that failed: an unbound output may have become an image.
template <class T>
void adopt(Report& report, Image<T>& image, const mvPelBuffer<T>& found) {
    const Sides result = std::exchange(image.result, {});
    image.anyPels = false;
    if (!found.isBound()) return;
    if (!image.isBound()) {
        report.same("width of a result", result.x, found.width());
        report.same("height of a result", result.y, found.height());
        image = newImage<T>(found.width(), found.height());
        image.x = found.offset().x;
        image.y = found.offset().y;
    }
    if (result != Sides{}) image.xform = xformOf(found.xformCache());
    for (long y = 0; y < std::min(image.height, found.height()); ++y) {
        for (long x = 0; x < std::min(image.width, found.width()); ++x) {
            image.at(x, y) = found.pel(x, y);
        }
    }
}

template <class T>
void comparePels(Report& report, const Image<T>& image, const mvPelBuffer<T>& found) {
    std::size_t i = 0;
    for (long y = 0; y < image.height; ++y) {
        const T* row = found.pointToRow(y);
        for (long x = 0; x < image.width; ++x) report.sameValue(i++, image.at(x, y), row[x]);
    }
}

template <class T>
std::string compareImage(const std::string& name, const Image<T>& image,
                         const mvPelBuffer<T>& found) {
    Report report(name);
    report.same("bound", image.isBound(), found.isBound());
    report.same("width", image.width, found.width());
    report.same("height", image.height, found.height());
    report.same("x", image.x, found.offset().x);
    report.same("y", image.y, found.offset().y);
    report.same("transform", image.xform, xformOf(found.xformCache()));
    if (report.isEmpty()) comparePels(report, image, found);
    return report.text();
}

template <class T>
std::string compareImages(const std::string& name, Images<T>& images, const PelBuffers<T>& found) {
    std::string text;
    for (std::size_t i = 0; i < images.size(); ++i) {
        Report report(name + " " + std::to_string(i));
        if (images[i].anyPels) adopt(report, images[i], found[i]);
        if (text.empty()) text = report.text();
    }
    for (std::size_t i = 0; i < images.size() && text.empty(); ++i) {
        text = compareImage(name + " " + std::to_string(i), images[i], found[i]);
    }
    return text;
}

const std::vector<float>& gainsOf(const reference::Ring& ring) {
    return ring.profile;
}
const std::vector<float>& gainsOf(const reference::Lobe& lobe) {
    return lobe.response;
}

template <class Response, class Filter>
std::string compareFilter(const std::string& name, const ParametricFilter<Response>& filter,
                          Filter& found) {
    Report report(name);
    report.same("flag", filter.isInitialized, found.isInitialized());
    report.same("response", filter.hasResponse, found.hasResponse());
    if (!report.isEmpty() || !filter.hasResponse) return report.text();
    const mvFilterResponse& response = mvi::FilterAccess::response(found);
    report.same("support width", filter.response.supportWidth, response.width());
    report.same("support height", filter.response.supportHeight, response.height());
    if (!report.isEmpty()) return report.text();
    for (std::size_t i = 0; i < response.size(); ++i) {
        report.sameValue(i, gainsOf(filter.response)[i], response.data()[i]);
    }
    return report.text();
}

std::string compareFilter(const std::string& name, ImageFilter& filter,
                          mvFrequencyFilterImage& found) {
    Report report(name);
    report.same("flag", filter.isInitialized, found.isInitialized());
    return report.isEmpty() ? compareBuffer(name, filter.image, found.image()) : report.text();
}

template <class Filters, class Found>
void compareFilters(std::string& text, const std::string& name, Filters& filters, Found& found) {
    for (std::size_t i = 0; i < filters.size() && text.empty(); ++i) {
        text = compareFilter(name + " " + std::to_string(i), filters[i], found[i]);
    }
}

std::string compareError(const std::string& name, const Error& error,
                         const std::unique_ptr<mvFrequencyDefs::Errors>& found) {
    Report report(name);
    report.same("object", error.isThere(), found != nullptr);
    if (!error.isThere() || !report.isEmpty()) return report.text();
    report.same("class", leafName(error.leaf), support::className(*found));
    report.same("message", error.message.value_or("none"),
                found->message() != nullptr ? found->message() : "none");
    return report.text();
}

std::string compareAnswers(const std::vector<double>& model, const std::vector<double>& found) {
    Report report("answer");
    report.same("length", static_cast<long>(model.size()), static_cast<long>(found.size()));
    if (!report.isEmpty()) return report.text();
    for (std::size_t i = 0; i < model.size(); ++i) report.sameValue(i, model[i], found[i]);
    return report.text();
}

}  // namespace

std::string compare(Library& library, World& world) {
    std::string text = compareAnswers(world.answer, library.answer);
    if (text.empty() && world.record != library.record) {
        text = "record: " + support::hex(world.record) + " expected, " +
               support::hex(library.record) + " found";
    }
    if (text.empty() && world.watched != library.watched) {
        text = std::to_string(world.watched) + " calls of watchers expected, " +
               std::to_string(library.watched) + " made";
    }
    for (std::size_t i = 0; i < world.errors.size() && text.empty(); ++i) {
        text = compareError("error " + std::to_string(i), world.errors[i], library.errors[i]);
    }
    for (std::size_t i = 0; i < world.buffers.size() && text.empty(); ++i) {
        text = compareBuffer("buffer " + std::to_string(i), world.buffers[i], library.buffers[i]);
    }
    if (text.empty()) text = compareImages("doubles", world.doubles, library.doubles);
    if (text.empty()) text = compareImages("bytes", world.bytes, library.bytes);
    if (text.empty()) text = compareImages("shorts", world.shorts, library.shorts);
    compareFilters(text, "band pass", world.bandPasses, library.bandPasses);
    compareFilters(text, "band reject", world.bandRejects, library.bandRejects);
    compareFilters(text, "gabor", world.gabors, library.gabors);
    compareFilters(text, "gabor reject", world.gaborRejects, library.gaborRejects);
    compareFilters(text, "image filter", world.imageFilters, library.imageFilters);
    return text;
}

}  // namespace model
