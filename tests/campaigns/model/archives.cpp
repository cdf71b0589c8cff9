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

constexpr const char* kRoutine = "null 0";

std::size_t planeFloats(const Buffer& b) {
    return 2 * static_cast<std::size_t>(b.width) * static_cast<std::size_t>(b.height);
}

std::vector<float> floatsOf(const Buffer& b) {
    if (!b.hasData) return {};
    return {b.storage.begin(), b.storage.begin() + static_cast<std::ptrdiff_t>(planeFloats(b))};
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
        require(static_cast<std::size_t>(size));
        std::uint64_t value = 0;
        for (int i = 0; i < size; ++i) {
            value |= std::uint64_t{static_cast<unsigned char>(bytes_[next_++])} << (8 * i);
        }
        return value;
    }
    void require(std::size_t size) const {
        if (bytes_.size() - next_ < size) throw Thrown{"Truncated"};
    }
    bool flag() {
        const std::uint64_t value = little(1);
        if (value > 1) throw Thrown{"BadValue"};
        return value == 1;
    }
    long number() { return static_cast<std::int32_t>(little(4)); }
    float f32() { return mvi::bitCast<float>(static_cast<std::uint32_t>(little(4))); }
    double f64() { return mvi::bitCast<double>(little(8)); }
    void version(unsigned newest, const char* where) {
        if (little(1) > newest) throw Thrown{std::string("UnknownVersion ") + where};
    }

  private:
    const std::string& bytes_;
    std::size_t next_ = 0;
};

// The first version has a transform always.
Xform readXform(Reader& in, bool isFirst) {
    Xform xform;
    xform.isSet = isFirst || in.flag();
    if (!xform.isSet) return xform;
    for (double& value : xform.values) value = in.f64();
    return xform;
}

bool readFields(Reader& in, Buffer& b, bool isFirst) {
    for (long Buffer::*field :
         {&Buffer::width, &Buffer::height, &Buffer::imageWidth, &Buffer::imageHeight}) {
        b.*field = in.number();
    }
    b.masked = in.number() != 0;
    b.maskedMiny = in.number();
    b.maskedMaxy = in.number();
    b.inverseComputed = in.flag();
    b.xform = readXform(in, isFirst);
    in.version(0, kRoutine);
    b.x = in.number();
    b.y = in.number();
    return in.flag();
}

std::vector<float> readFloats(Reader& in) {
    in.version(0, kRoutine);
    const auto count = static_cast<std::size_t>(in.little(4));
    in.require(4 * count);
    std::vector<float> floats(count);
    for (float& value : floats) value = in.f32();
    return floats;
}

// A plane of ordinary sides may come with fewer floats.
void requireFloats(const Buffer& b, std::size_t count) {
    const bool isOrdinary = b.width <= 2048 && b.height <= 2048;
    const bool isNegative = b.width < 0 || b.height < 0;
    if (isNegative || (!isOrdinary && planeFloats(b) > count)) throw Thrown{"BadValue"};
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
    const bool isFirst = !bytes.empty() && bytes[0] == 0;
    in.version(1, "filt/fft 572");
    b.hasData = false;
    b.anyRest = true;
    const bool hasData = readFields(in, b, isFirst);
    std::vector<float> floats = readFloats(in);
    if (hasData) requireFloats(b, floats.size());
    b.anyRest = false;
    b.hasData = hasData;
    b.storage.clear();
    if (!hasData) return;
    b.storage = std::move(floats);
    b.storage.resize(planeFloats(b));
    b.storage.resize(planeFloats(b) + 7);
}

bool loadBase(const std::string& bytes, const std::string& where) {
    Reader in(bytes);
    in.version(0, where.c_str());
    in.version(0, "filt/freqfilt 136");
    return in.flag();
}

void requireWhole(const std::string& bytes, const std::string& record) {
    if (bytes.size() < record.size()) throw Thrown{"Truncated"};
}

void load(ImageFilter& filter, const std::string& bytes) {
    filter.isInitialized = loadBase(bytes, "filt/freqfilt 2846");
    load(filter.image, bytes.substr(3));
}

}  // namespace model
