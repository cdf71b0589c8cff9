// The archive records in the model: what is stored, and what loading makes of it.
#include "campaigns/model/archives.h"

#include <cstring>

#include "support/filter_records.h"

namespace model {
namespace {

using archive::Record;

std::int32_t narrow(long value) {
    return static_cast<std::int32_t>(value);
}

std::vector<float> floatsOf(const Buffer& b) {
    if (!b.hasData) return {};
    return {b.storage.begin(), b.storage.begin() + 2 * b.width * b.height};
}

template <class T>
std::vector<float> gains(const T& response, const std::vector<float>& values) {
    return {values.begin(), values.begin() + response.supportWidth * response.supportHeight};
}

// Reads what Record lays.
class Reader {
  public:
    explicit Reader(const std::string& bytes) : bytes_(bytes) {}

    std::uint64_t little(int size) {
        if (bytes_.size() - next_ < static_cast<std::size_t>(size)) throw Thrown{"Truncated"};
        std::uint64_t value = 0;
        for (int i = 0; i < size; ++i) {
            value |= std::uint64_t{static_cast<unsigned char>(bytes_[next_++])} << (8 * i);
        }
        return value;
    }
    long number() { return static_cast<std::int32_t>(little(4)); }
    float f32() { return mvi::bitCast<float>(static_cast<std::uint32_t>(little(4))); }
    double f64() { return mvi::bitCast<double>(little(8)); }
    void routineVersion() {
        if (little(1) != 0) throw Thrown{"UnknownVersion null 0"};
    }

  private:
    const std::string& bytes_;
    std::size_t next_ = 0;
};

Xform readXform(Reader& in) {
    Xform xform;
    xform.isSet = in.little(1) != 0;
    if (!xform.isSet) return xform;
    for (double& value : xform.values) value = in.f64();
    return xform;
}

bool readFields(Reader& in, Buffer& b) {
    for (long Buffer::*field :
         {&Buffer::width, &Buffer::height, &Buffer::imageWidth, &Buffer::imageHeight}) {
        b.*field = in.number();
    }
    b.masked = in.number() != 0;
    b.maskedMiny = in.number();
    b.maskedMaxy = in.number();
    b.inverseComputed = in.little(1) != 0;
    b.xform = readXform(in);
    in.routineVersion();
    b.x = in.number();
    b.y = in.number();
    return in.little(1) != 0;
}

std::vector<float> readFloats(Reader& in) {
    in.routineVersion();
    std::vector<float> floats(in.little(4));
    for (float& value : floats) value = in.f32();
    return floats;
}

}  // namespace

Record recordOf(const Buffer& b) {
    Record record;
    record.u8(1);
    for (const long field : {b.width, b.height, b.imageWidth, b.imageHeight, long{b.masked},
                             b.maskedMiny, b.maskedMaxy}) {
        record.i32(narrow(field));
    }
    record.flag(b.inverseComputed).flag(b.xform.isSet);
    if (b.xform.isSet) {
        for (const double value : b.xform.values) record.f64(value);
    }
    return record.integerPair(narrow(b.x), narrow(b.y)).flag(b.hasData).floats(floatsOf(b));
}

Record recordOf(const RingFilter& filter) {
    const reference::Ring& ring = filter.response;
    return archive::RingRecord{.initialized = filter.isInitialized,
                               .supportWidth = ring.supportWidth,
                               .supportHeight = ring.supportHeight,
                               .frequency = ring.given.frequency,
                               .sigma = ring.given.sigma,
                               .plateau = ring.given.plateau,
                               .width = narrow(ring.given.width),
                               .height = narrow(ring.given.height),
                               .radius = narrow(ring.given.radius),
                               .hasResponse = filter.hasResponse,
                               .response = gains(ring, ring.profile)}
        .record();
}

Record recordOf(const LobeFilter& filter) {
    const reference::Lobe& lobe = filter.response;
    return archive::LobeRecord{.initialized = filter.isInitialized,
                               .supportWidth = lobe.supportWidth,
                               .supportHeight = lobe.supportHeight,
                               .angle = lobe.given.angle,
                               .frequency = lobe.given.frequency,
                               .sigmaX = lobe.given.sigmaX,
                               .sigmaY = lobe.given.sigmaY,
                               .plateauX = lobe.given.plateauX,
                               .plateauY = lobe.given.plateauY,
                               .width = narrow(lobe.given.width),
                               .height = narrow(lobe.given.height),
                               .radius = narrow(lobe.given.radius),
                               .hasResponse = filter.hasResponse,
                               .response = gains(lobe, lobe.response)}
        .record();
}

Record recordOf(const ImageFilter& filter) {
    return Record().u8(0).u8(0).flag(filter.isInitialized).then(recordOf(filter.image));
}

void load(Buffer& b, const std::string& bytes) {
    Reader in(bytes);
    if (in.little(1) > 1) throw Thrown{"UnknownVersion filt/fft 572"};
    b.hasData = false;
    b.anyRest = true;
    const bool hasData = readFields(in, b);
    std::vector<float> floats = readFloats(in);
    b.anyRest = false;
    b.hasData = hasData;
    b.storage.clear();
    if (!hasData) return;
    b.storage = std::move(floats);
    b.storage.resize(static_cast<std::size_t>(2 * b.width * b.height) + 7);
}

}  // namespace model
