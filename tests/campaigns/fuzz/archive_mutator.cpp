// Changes archives field by field.
#include "archive_mutator.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "record_fields.h"
#include "support/archive_record.h"
#include "support/content.h"

namespace fuzz {
namespace {

using support::Random;

template <class T>
T oneOf(std::span<const T> values, Random& random) {
    return values[random.below(static_cast<unsigned>(values.size()))];
}

constexpr std::uint32_t kIntegers[] = {
    0, 1, 2, 3, 4, 5, 7, 8, 9, 16, 31, 64, 255, 256, 300, 2047, 2048, 2049, 4096, 65536, 65537,
    // the ends of the signed and the unsigned range, and what overflows when doubled or squared
    0x3FFFFFFF, 0x40000000, 0x7FFFFFFE, 0x7FFFFFFF, 0x80000000, 0x80000001, 0xFFFF0000, 0xFFFFFFF0,
    0xFFFFFFFE, 0xFFFFFFFF};

constexpr float kFloats[] = {0.0F,
                             -0.0F,
                             1.0F,
                             -1.0F,
                             0.5F,
                             255.5F,
                             65536.0F,
                             1e30F,
                             std::numeric_limits<float>::max(),
                             std::numeric_limits<float>::lowest(),
                             std::numeric_limits<float>::min(),
                             std::numeric_limits<float>::denorm_min(),
                             std::numeric_limits<float>::infinity(),
                             -std::numeric_limits<float>::infinity(),
                             std::numeric_limits<float>::quiet_NaN()};

constexpr double kNumbers[] = {0.0,
                               -0.0,
                               0.01,
                               0.25,
                               0.5,
                               0.75,
                               1.0,
                               -1.0,
                               3.0,
                               6.3,
                               1e5,
                               2147483647.0,
                               4294967296.0,
                               -9223372036854775808.0,
                               1e300,
                               std::numeric_limits<double>::max(),
                               std::numeric_limits<double>::min(),
                               std::numeric_limits<double>::denorm_min(),
                               std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()};

template <class Bits>
void put(std::string& bytes, std::size_t at, Bits value) {
    for (std::size_t i = 0; i < sizeof(Bits); ++i) {
        bytes[at + i] = static_cast<char>(value >> 8 * i);
    }
}

std::uint32_t wordAt(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) {
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    }
    return value;
}

std::uint32_t someInteger(std::uint32_t old, Random& random) {
    switch (random.below(5)) {
        case 0:
            return old + random.below(7) - 3;
        case 1:
        case 2:
            return 1U << random.below(7);
        default:
            return oneOf<std::uint32_t>(kIntegers, random);
    }
}

void putNumber(std::string& bytes, std::size_t at, Random& random) {
    double value = oneOf<double>(kNumbers, random);
    if (random.below(3) == 0) value = random.symmetric();
    put(bytes, at, std::bit_cast<std::uint64_t>(value));
}

void putFloat(std::string& bytes, const Field& field, Random& random) {
    const std::size_t at = field.at + 4 * random.below(static_cast<unsigned>(field.size / 4));
    put(bytes, at, std::bit_cast<std::uint32_t>(oneOf<float>(kFloats, random)));
}

void putByte(std::string& bytes, std::size_t at, unsigned range, Random& random) {
    bytes[at] = static_cast<char>(random.below(16) == 0 ? random.below(256) : random.below(range));
}

/// A count that is as large as what follows it.
struct Array {
    std::size_t count;  // where the count stands
    std::size_t size;   // of what follows, in bytes
    std::size_t unit;   // 4 for floats, 1 for text
};

Array arrayAt(const std::vector<Field>& fields, std::size_t i) {
    const bool isEmpty =
        i + 1 == fields.size() || fields[i + 1].at != fields[i].at + 4 ||
        (fields[i + 1].kind != FieldKind::floats && fields[i + 1].kind != FieldKind::text);
    const bool isText = !isEmpty && fields[i + 1].kind == FieldKind::text;
    return {fields[i].at, isEmpty ? 0 : fields[i + 1].size, isText ? 1U : 4U};
}

void resize(std::string& bytes, const Array& array, std::size_t count) {
    const std::size_t begin = array.count + 4;
    const std::size_t size = count * array.unit;
    if (size < array.size) bytes.erase(begin + size, array.size - size);
    if (size > array.size) bytes.insert(begin + array.size, size - array.size, '\0');
    put(bytes, array.count, static_cast<std::uint32_t>(count));
}

void mutateCount(std::string& bytes, const Array& array, Random& random) {
    const std::uint32_t old = wordAt(bytes, array.count);
    if (random.below(2) == 0) return put(bytes, array.count, someInteger(old, random));
    const std::size_t near = array.size / array.unit + random.below(5);
    resize(bytes, array,
           random.below(2) == 0 ? random.below(65) : near - std::min<std::size_t>(near, 2));
}

void mutateField(std::string& bytes, const std::vector<Field>& fields, std::size_t i,
                 Random& random) {
    const Field& field = fields[i];
    switch (field.kind) {
        case FieldKind::version:
        case FieldKind::flag:
            return putByte(bytes, field.at, 2, random);
        case FieldKind::tag:
            return putByte(bytes, field.at, 4, random);
        case FieldKind::integer:
            return put(bytes, field.at, someInteger(wordAt(bytes, field.at), random));
        case FieldKind::count:
            return mutateCount(bytes, arrayAt(fields, i), random);
        case FieldKind::floats:
            return putFloat(bytes, field, random);
        case FieldKind::number:
            return putNumber(bytes, field.at, random);
        case FieldKind::text:
            bytes[field.at + random.below(static_cast<unsigned>(field.size))] ^=
                static_cast<char>(1U << random.below(8));
    }
}

/// Gives a record small sides that are powers of two, and the floats that they ask for or a few
/// more or less: the way to what comes behind the checks of sizes.
void fit(std::string& bytes, const std::vector<Field>& fields, Random& random) {
    std::vector<std::size_t> sides;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const Field& field = fields[i];
        if (field.kind == FieldKind::flag || field.kind == FieldKind::tag) sides.clear();
        if (field.kind == FieldKind::integer) sides.push_back(field.at);
        if (sides.size() != 2) continue;
        const std::uint32_t w = 1U << random.below(5);
        const std::uint32_t h = 1U << random.below(5);
        put(bytes, sides[0], w);
        put(bytes, sides[1], h);
        const auto isCount = [](const Field& f) { return f.kind == FieldKind::count; };
        const auto count =
            std::find_if(fields.begin() + static_cast<long>(i), fields.end(), isCount);
        if (count == fields.end()) return;
        const std::size_t floats = (random.below(2) + 1) * w * h + random.below(4) / 3;
        return resize(bytes, arrayAt(fields, static_cast<std::size_t>(count - fields.begin())),
                      floats);
    }
}

/// Gives a pair of integers that stand together, which are mostly sides, small powers of two, or an
/// end of the range beside nothing: what is that wide and not high has no elements.
void mutateSides(std::string& bytes, const std::vector<Field>& fields, Random& random) {
    std::vector<std::size_t> pairs;
    for (std::size_t i = 0; i + 1 < fields.size(); ++i) {
        const bool isPair = fields[i].kind == FieldKind::integer &&
                            fields[i + 1].kind == FieldKind::integer &&
                            fields[i + 1].at == fields[i].at + 4;
        if (isPair) pairs.push_back(fields[i].at);
    }
    if (pairs.empty()) return;
    const std::size_t at = pairs[random.below(static_cast<unsigned>(pairs.size()))];
    const bool isNothing = random.below(2) == 0;
    const std::size_t nothing = at + 4 * random.below(2);
    for (const std::size_t side : {at, at + 4}) {
        const std::uint32_t wide =
            isNothing ? oneOf<std::uint32_t>(kIntegers, random) : 1U << random.below(7);
        put(bytes, side, isNothing && side == nothing ? 0U : wide);
    }
}

/// One good record of every class.
const std::vector<std::pair<std::string, std::string>>& goodRecords() {
    static const auto all = [] {
        std::vector<std::pair<std::string, std::string>> records;
        for (const archive::ContentKind& kind : archive::contentKinds()) {
            const auto content = kind.make();
            const auto store = [&](mvArchive& ar) { content->store(ar); };
            if (!content->takesMore()) records.emplace_back(kind.name, support::storedBy(store));
        }
        return records;
    }();
    return all;
}

std::string someObject(Random& random) {
    const auto& records = goodRecords();
    // The first record is a buffer, and that is no object.
    const auto& [name, bytes] =
        records[1 + random.below(static_cast<unsigned>(records.size() - 1))];
    return archive::Record().u8(1).text(name).bytes() + bytes;
}

void mutateStructure(std::string& kind, std::string& bytes, const std::vector<Field>& fields,
                     Random& random) {
    switch (random.below(5)) {
        case 0: {
            const auto& [name, good] =
                goodRecords()[random.below(static_cast<unsigned>(goodRecords().size()))];
            kind = name;
            if (random.below(2) == 0) bytes = good;
            return;
        }
        case 1:
            if (kind != "pointers") bytes.clear();
            kind = "pointers";
            bytes += someObject(random);
            return;
        case 2:
            bytes += archive::Record().u8(2).u32(random.below(4)).bytes();
            return;
        case 3:
            bytes += bytes;
            return;
        default:
            if (!fields.empty()) {
                bytes.resize(fields[random.below(static_cast<unsigned>(fields.size()))].at);
            }
    }
}

}  // namespace

void mutateArchive(std::string& kind, std::string& bytes, Random& random) {
    const std::vector<Field> fields = recordFields(kind, bytes);
    const unsigned choice = random.below(16);
    if (choice == 0 || fields.empty()) return mutateStructure(kind, bytes, fields, random);
    if (choice <= 2) return fit(bytes, fields, random);
    if (choice == 3) return mutateSides(bytes, fields, random);
    mutateField(bytes, fields, random.below(static_cast<unsigned>(fields.size())), random);
}

}  // namespace fuzz
