// What the page is given, as JavaScript's values.
#include "answers.h"

#include "session.h"

using emscripten::typed_memory_view;
using emscripten::val;

namespace {

// A copy of pels in the page's memory, without the gaps between rows.
template <class T>
val copyOf(const mvPelBuffer_const<T>& picture, const char* type) {
    const val all = val::global(type).new_(picture.width() * picture.height());
    const bool hasGaps = picture.rowUpdate() != picture.width();
    const long rows = hasGaps ? 1 : picture.height();
    for (long y = 0; y < picture.height(); y += rows) {
        const auto count = static_cast<std::size_t>(rows * picture.width());
        all.call<void>("set", typed_memory_view(count, picture.pointToRow(y)), y * picture.width());
    }
    return all;
}

val copyOf(const mvPelBuffer_const<unsigned char>& picture) {
    return copyOf(picture, "Uint8Array");
}

// A picture and its halves, to be looked at from near and far.
val levelsOf(mvPelBuffer<unsigned char> picture) {
    val levels = val::array();
    for (;;) {
        levels.call<void>("push", onePicture(picture));
        if (picture.width() <= 64 && picture.height() <= 64) return levels;
        picture = halved(picture);
    }
}

template <class List, class Make>
val listOf(const List& list, Make make) {
    val result = val::array();
    for (const auto& each : list) result.call<void>("push", make(each));
    return result;
}

val shown(const mvFilterStep& step) {
    val result = val::object();
    result.set("kind", static_cast<int>(step.kind));
    result.set("frequency", step.frequency);
    result.set("angle", step.degrees);
    result.set("sigma", step.sigma);
    result.set("sigmaAcross", step.sigmaAcross == 0 ? step.sigma : step.sigmaAcross);
    result.set("plateau", step.plateau);
    result.set("plateauAcross", step.plateauAcross);
    result.set("dcRadius", step.dcRadius);
    result.set("bothSides", step.bothSides);
    return result;
}

val shown(const mvSuggestion& suggestion) {
    val result = val::object();
    result.set("radius", suggestion.radius);
    result.set("levels", suggestion.levels);
    result.set("steps", listOf(suggestion.steps, [](const auto& step) { return shown(step); }));
    result.set("arguments",
               listOf(suggestion.arguments, [](const auto& word) { return val(word); }));
    return result;
}

val shown(const mvPeak& peak) {
    val result = val::object();
    result.set("period", peak.period());
    result.set("angle", peak.degrees);
    result.set("amplitude", peak.amplitude);
    result.set("decibels", peak.decibels);
    result.set("group", peak.group);
    result.set("order", peak.order);
    result.set("steps", listOf(peak.steps, [](const auto& step) { return shown(step); }));
    result.set("arguments", listOf(peak.arguments, [](const auto& word) { return val(word); }));
    return result;
}

}  // namespace

val onePicture(const mvPelBuffer_const<unsigned char>& picture) {
    val result = val::object();
    result.set("width", picture.width());
    result.set("height", picture.height());
    result.set("pels", copyOf(picture));
    return result;
}

val shown(const mvPelBuffer<unsigned char>& picture) {
    val result = val::object();
    result.set("levels", levelsOf(picture));
    result.set("pels", val::null());
    return result;
}

val shown(const mvPelBuffer<unsigned short>& picture) {
    val result = val::object();
    result.set("levels", levelsOf(upperBytes(picture)));
    result.set("pels", copyOf<unsigned short>(picture, "Uint16Array"));
    return result;
}

val numbersOf(const mvPelBuffer_const<double>& values) {
    return copyOf<double>(values, "Float32Array");
}

val bytesOf(const std::string& bytes) {
    const val copy = val::global("Uint8Array").new_(bytes.size());
    const auto* from = reinterpret_cast<const unsigned char*>(bytes.data());
    copy.call<void>("set", typed_memory_view(bytes.size(), from));
    return copy;
}

val shown(const mvSuggestions& suggestions) {
    val result = val::object();
    result.set("filters",
               listOf(suggestions.filters, [](const auto& each) { return shown(each); }));
    result.set("remarks", listOf(suggestions.remarks, [](const auto& text) { return val(text); }));
    result.set("refusal", suggestions.refusal);
    return result;
}

val shown(const std::vector<mvPeak>& peaks) {
    val result = val::object();
    result.set("peaks", listOf(peaks, [](const auto& peak) { return shown(peak); }));
    return result;
}
