// The small versioned archive records that buffers and filters share.
#include <filt/fft/internal/archive_routines.h>

#include <algorithm>

namespace mvi {

namespace {

template <class T>
void exchangeCoordinates(mvArchive& ar, mvPair<T>& pair) {
    unsigned char version = 0;
    ar || version;
    requireVersion(version, 0, nullptr, 0);
    ar || pair.x || pair.y;
}

std::size_t exchangeFloatsHead(mvArchive& ar, std::size_t count) {
    unsigned char version = 0;
    ar || version;
    requireVersion(version, 0, nullptr, 0);
    auto field = static_cast<unsigned long>(count);  // no plane and no response holds 2^32 floats
    ar || field;
    return field;
}

}  // namespace

void requireVersion(unsigned char version, unsigned char newest, const char* text, long number) {
    if (version > newest) throw mvArchive::UnknownVersion(text, number);
}

void exchangePair(mvArchive& ar, mvPair<std::int32_t>& pair) {
    exchangeCoordinates(ar, pair);
}
void exchangePair(mvArchive& ar, mvPair<long>& pair) {
    exchangeCoordinates(ar, pair);
}
void exchangePair(mvArchive& ar, mvPair<double>& pair) {
    exchangeCoordinates(ar, pair);
}

void storeFloats(mvArchive& ar, const float* values, std::size_t count) {
    exchangeFloatsHead(ar, count);
    ar.floats(const_cast<float*>(values), count);
}

LoadedFloats loadFloats(mvArchive& ar, std::size_t slack) {
    constexpr std::size_t kFirstFloats = 16384;
    LoadedFloats floats;
    floats.count = exchangeFloatsHead(ar, 0);
    for (std::size_t have = 0; have < floats.count;) {
        const std::size_t room = std::min(floats.count, std::max(2 * have, kFirstFloats));
        floats.values.resize(room + slack);
        ar.floats(floats.values.data() + have, room - have);
        have = room;
    }
    return floats;
}

void padFloats(LoadedFloats& floats, std::size_t needed, std::size_t slack,
               std::size_t largestPadded) {
    if (needed > std::max(floats.count, largestPadded)) {
        throw mvArchive::BadValue("An array of the archive is shorter than its sizes say.");
    }
    floats.values.resize(needed + slack);
    if (needed < floats.count) std::fill_n(floats.values.data() + needed, slack, 0.0f);
}

}  // namespace mvi
