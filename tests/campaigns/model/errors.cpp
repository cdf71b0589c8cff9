// The error objects of the model.
#include "campaigns/model/errors.h"

#include <array>

#include "support/archive_record.h"

namespace model {
namespace {

using archive::Record;

const std::string kScope = "mvFrequencyDefs::";

void requireWhole(const std::string& bytes, std::size_t size) {
    if (bytes.size() < size) throw Thrown{"Truncated"};
}

void requireVersion(const std::string& bytes, std::size_t i, const std::string& name) {
    requireWhole(bytes, i + 1);
    if (bytes[i] != 0) throw Thrown{"UnknownVersion " + kScope + name + " 0"};
}

}  // namespace

const std::string& leafName(long leaf) {
    static const std::array<std::string, 6> kNames = {"InvalidArgument", "Uninitialized",
                                                      "InvalidSize",     "UnboundWindow",
                                                      "InvalidBuffer",   "BadCoord"};
    return kNames.at(static_cast<std::size_t>(leaf));
}

std::string textOf(const Error& error) {
    return leafName(error.leaf) + (error.message ? ": " + *error.message : "");
}

std::string recordOf(const Error& error) {
    Record record = Record().u8(0).u8(0).flag(error.message.has_value());
    if (error.message) record.text(*error.message);
    return record.bytes();
}

std::string pointerRecordOf(const Error& error) {
    return Record().u8(1).text(kScope + leafName(error.leaf)).bytes() + recordOf(error);
}

void load(Error& error, const std::string& bytes, const Error& src) {
    requireVersion(bytes, 0, leafName(error.leaf));
    requireVersion(bytes, 1, "Errors");
    requireWhole(bytes, 3);
    const auto flag = static_cast<unsigned char>(bytes[2]);
    if (flag > 1) throw Thrown{"BadValue"};
    requireWhole(bytes, recordOf(src).size());
    error.message = src.message;
}

// A tag that is none, or a name of another length, which no class has.
void loadPointer(Error& error, const std::string& bytes, const Error& src) {
    const std::string whole = pointerRecordOf(src);
    requireWhole(bytes, 1);
    if (bytes[0] != whole[0]) throw Thrown{"BadValue"};
    requireWhole(bytes, whole.size());
    if (bytes[1] != whole[1]) throw Thrown{"UnknownClass"};
    if (bytes[2] != whole[2]) throw Thrown{"Truncated"};
    error = src;
}

}  // namespace model
