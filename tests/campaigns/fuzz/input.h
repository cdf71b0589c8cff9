// The inputs of the fuzz targets: a heading in words, then bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline std::string_view asText(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

struct Input {
    std::string_view heading;
    std::string_view body;
};

/// The parts before and after the first `mark`.
inline Input split(std::string_view all, char mark) {
    const std::size_t at = all.find(mark);
    if (at == std::string_view::npos) return {all, {}};
    return {all.substr(0, at), all.substr(at + 1)};
}

/// Whether kept inputs are replayed as a test. There are few of them, and they take all ways.
#if defined(MVFREQ_REPLAYS)
inline constexpr bool kIsReplayed = true;
#else
inline constexpr bool kIsReplayed = false;
#endif

inline std::uint32_t hashOf(std::string_view all) {
    std::uint32_t hash = 2166136261U;
    for (const char c : all) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash;
}

/// True for one input in `count`, by its content: no input is larger than others for long.
inline bool isOneIn(std::uint32_t count, std::string_view all) {
    return (hashOf(all) >> 8) % count == 0;
}

}  // namespace fuzz
