// The archive form of the frequency buffer.
#include <filt/fft/frequency_buffer.h>
#include <filt/fft/internal/archive_routines.h>
#include <filt/fft/internal/buffer_access.h>
#include <filt/fft/internal/integers.h>

#include <cstdint>

namespace {

// The floats of a plane from an archive. Planes up to the largest size may come with fewer floats;
// larger ones are not made by this library and must bring all of theirs.
mvFloatArray loadPlane(mvi::LoadedFloats floats, std::int32_t width, std::int32_t height) {
    if (width < 0 || height < 0) throw mvArchive::BadValue("A size of the archive is negative.");
    constexpr std::size_t kSide = mvi::BufferAccess::kLargestSide;
    const std::size_t needed = mvi::heldSize(2 * std::int64_t{width} * height);
    const bool ordinary =
        width <= mvi::BufferAccess::kLargestSide && height <= mvi::BufferAccess::kLargestSide;
    mvi::padFloats(floats, needed, mvi::BufferAccess::kSlackFloats,
                   ordinary ? 2 * kSide * kSide : 0);
    return std::move(floats.values);
}

}  // namespace

mvArchive& operator||(mvArchive& ar, mvFrequencyBuffer& buffer) {
    constexpr unsigned char kNewest = 1;
    unsigned char version = kNewest;
    ar || version;
    // The number is part of the error that readers of archives know; it counts nothing.
    mvi::requireVersion(version, kNewest, "filt/fft", 572);
    if (ar.isStoring()) {
        buffer.store(ar);
    } else {
        buffer.load(ar, version);
    }
    return ar;
}

// What is stored is only read: the fields are exchanged by one function that serves both ways.
mvArchive& operator||(mvArchive& ar, const mvFrequencyBuffer& buffer) {
    if (!ar.isStoring()) throw mvArchive::BadValue("A const buffer cannot be loaded.");
    return ar || const_cast<mvFrequencyBuffer&>(buffer);
}

// What storing and loading have in common: everything up to the floats.
bool mvFrequencyBuffer::exchangeFields(mvArchive& ar, unsigned char version) {
    bool holdsPlane = data_ != nullptr;
    if (!ar.isStoring()) data_ = nullptr;
    ar || width_ || height_ || imageWidth_ || imageHeight_;
    ar || masked_ || maskedMiny_ || maskedMaxy_ || inverseComputed_;
    if (version == 0) {
        mvXform<2> xform;
        ar || xform;
        xform_.xform(mv2XformLinear(xform));
    } else {
        ar || xform_;
    }
    mvi::exchangePair(ar, offset_);
    ar || holdsPlane;
    return holdsPlane;
}

void mvFrequencyBuffer::store(mvArchive& ar) {
    const bool holdsPlane = exchangeFields(ar, 1);
    mvi::storeFloats(ar, data_, holdsPlane ? mvi::BufferAccess::floats(*this) : 0);
}

// The fields read take effect at once; the plane that they no longer describe is dropped first.
void mvFrequencyBuffer::load(mvArchive& ar, unsigned char version) {
    const bool holdsPlane = exchangeFields(ar, version);
    mvi::LoadedFloats floats = mvi::loadFloats(ar, mvi::BufferAccess::kSlackFloats);
    if (holdsPlane) {
        storage_ = loadPlane(std::move(floats), width_, height_);
        data_ = storage_.data();
    } else {
        storage_ = mvFloatArray();
    }
}
