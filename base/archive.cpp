// Stream archives: bytes and the values made of them.
#include <base/archive.h>
#include <base/internal/archive_objects.h>
#include <internal/bit_cast.h>

#include <algorithm>
#include <cstdint>
#include <istream>
#include <limits>
#include <ostream>
#include <utility>

static_assert(std::numeric_limits<float>::is_iec559 && sizeof(float) == 4);
static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == 8);

namespace {

template <class Bits>
void toLittleEndian(Bits bits, unsigned char* raw) {
    for (std::size_t i = 0; i < sizeof(Bits); ++i) {
        raw[i] = static_cast<unsigned char>(bits >> (8 * i));
    }
}

template <class Bits>
Bits fromLittleEndian(const unsigned char* raw) {
    Bits bits = 0;
    for (std::size_t i = 0; i < sizeof(Bits); ++i) bits |= Bits{raw[i]} << (8 * i);
    return bits;
}

template <class Bits, class Value>
void exchangeAs(mvArchive& ar, Value& value) {
    unsigned char raw[sizeof(Bits)];
    if (ar.isStoring()) toLittleEndian(mvi::bitCast<Bits>(value), raw);
    ar.bytes(raw, sizeof raw);
    if (!ar.isStoring()) value = mvi::bitCast<Value>(fromLittleEndian<Bits>(raw));
}

// An integer in 32 bits, signed or not as `Narrow` is.
template <class Narrow, class Value>
void exchangeNarrowed(mvArchive& ar, Value& value) {
    if (ar.isStoring() && !std::in_range<Narrow>(value)) {
        throw mvArchive::BadValue("A number does not fit the 32 bits that archives have for it.");
    }
    auto narrow = static_cast<Narrow>(value);
    exchangeAs<std::uint32_t>(ar, narrow);
    if (!ar.isStoring()) value = static_cast<Value>(narrow);
}

}  // namespace

#if defined(_WIN32)
// Whoever takes its address imports it from the DLL.
constexpr int mvArchive::maxDepth;
#endif

mvArchive::mvArchive(std::ostream& out)
    : out_(&out), objects_(std::make_unique<mvi::ArchiveObjects>()) {}

mvArchive::mvArchive(std::istream& in)
    : in_(&in), objects_(std::make_unique<mvi::ArchiveObjects>()) {}

mvArchive::~mvArchive() = default;

void mvArchive::bytes(unsigned char* data, std::size_t size) {
    if (size == 0) return;
    const auto count = static_cast<std::streamsize>(size);
    try {
        if (out_) {
            out_->write(reinterpret_cast<const char*>(data), count);
        } else {
            in_->read(reinterpret_cast<char*>(data), count);
        }
    } catch (const std::ios_base::failure&) {
        // The stream's state says the same.
    }
    if (out_ && !*out_) throw WriteFailed();
    if (in_ && !*in_) throw Truncated();
}

void mvArchive::floats(float* values, std::size_t count) {
    constexpr std::size_t kStep = 4096;
    unsigned char raw[kStep * sizeof(float)];
    for (std::size_t done = 0; done < count;) {
        const std::size_t part = std::min(kStep, count - done);
        float* const first = values + done;
        for (std::size_t i = 0; out_ && i < part; ++i) {
            toLittleEndian(mvi::bitCast<std::uint32_t>(first[i]), raw + 4 * i);
        }
        bytes(raw, part * sizeof(float));
        for (std::size_t i = 0; in_ && i < part; ++i) {
            first[i] = mvi::bitCast<float>(fromLittleEndian<std::uint32_t>(raw + 4 * i));
        }
        done += part;
    }
}

mvArchive& operator||(mvArchive& ar, unsigned char& value) {
    ar.bytes(&value, 1);
    return ar;
}

mvArchive& operator||(mvArchive& ar, bool& value) {
    unsigned char raw = 0;
    if (ar.isStoring()) raw = value ? 1 : 0;
    ar || raw;
    if (raw > 1) throw mvArchive::BadValue("A truth value of the archive is neither 0 nor 1.");
    if (!ar.isStoring()) value = raw == 1;
    return ar;
}

mvArchive& operator||(mvArchive& ar, int& value) {
    exchangeNarrowed<std::int32_t>(ar, value);
    return ar;
}

mvArchive& operator||(mvArchive& ar, long& value) {
    exchangeNarrowed<std::int32_t>(ar, value);
    return ar;
}

mvArchive& operator||(mvArchive& ar, unsigned long& value) {
    exchangeNarrowed<std::uint32_t>(ar, value);
    return ar;
}

mvArchive& operator||(mvArchive& ar, float& value) {
    exchangeAs<std::uint32_t>(ar, value);
    return ar;
}

mvArchive& operator||(mvArchive& ar, double& value) {
    exchangeAs<std::uint64_t>(ar, value);
    return ar;
}

mvArchive& operator||(mvArchive& ar, std::string& value) {
    std::size_t length = value.size();
    exchangeNarrowed<std::uint32_t>(ar, length);
    if (ar.isStoring()) {
        ar.bytes(reinterpret_cast<unsigned char*>(value.data()), value.size());
        return ar;
    }
    // A length may be wrong: the string grows only as the bytes arrive.
    constexpr std::size_t kStep = 65536;
    std::string loaded;
    while (loaded.size() < length) {
        const std::size_t done = loaded.size();
        loaded.resize(done + std::min(kStep, length - done));
        ar.bytes(reinterpret_cast<unsigned char*>(loaded.data()) + done, loaded.size() - done);
    }
    value = std::move(loaded);
    return ar;
}

mvArchive& operator||(mvArchive& ar, mvXform<2>& value) {
    const mvMatrix<2>& m = value.matrix();
    const mvVector<2>& t = value.trans();
    double e[6] = {m.element(0, 0), m.element(0, 1), m.element(1, 0),
                   m.element(1, 1), t.x(),           t.y()};
    for (double& element : e) ar || element;
    if (!ar.isStoring()) value = {mvMatrix<2>(e[0], e[1], e[2], e[3]), mvVector<2>(e[4], e[5])};
    return ar;
}

mvArchive& operator||(mvArchive& ar, mv2XformCache& value) {
    bool set = value.isSet();
    mvXform<2> xform = value.linearXform().xform();
    ar || set;
    if (set) ar || xform;
    if (ar.isStoring()) return ar;
    value = mv2XformCache();
    if (set) value.xform(xform);
    return ar;
}
