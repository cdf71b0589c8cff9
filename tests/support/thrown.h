// What a call throws, as a text that tests compare with.
#pragma once

#include <base/archive.h>
#include <filt/fft.h>

#include <string>
#include <typeinfo>

#include "support/attention.h"

namespace support {

inline std::string className(const mvFrequencyDefs::Errors& error) {
    const std::type_info& type = typeid(error);
    if (type == typeid(mvFrequencyDefs::InvalidArgument)) return "InvalidArgument";
    if (type == typeid(mvFrequencyDefs::Uninitialized)) return "Uninitialized";
    if (type == typeid(mvFrequencyDefs::InvalidSize)) return "InvalidSize";
    if (type == typeid(mvFrequencyDefs::UnboundWindow)) return "UnboundWindow";
    if (type == typeid(mvFrequencyDefs::InvalidBuffer)) return "InvalidBuffer";
    if (type == typeid(mvFrequencyDefs::BadCoord)) return "BadCoord";
    return "Errors";
}

/// "Class: message" (only "Class" for a null message), "status n" for a failing poll,
/// "Interrupted", "mvException" for other errors of the base library, "nothing".
template <class Call>
std::string thrownBy(Call call) {
    try {
        call();
    } catch (const mvFrequencyDefs::Errors& error) {
        const char* message = error.message();
        return message ? className(error) + ": " + message : className(error);
    } catch (const mvStatusException& error) {
        return "status " + std::to_string(error.status());
    } catch (const Interrupted&) {
        return "Interrupted";
    } catch (const mvException&) {
        return "mvException";
    }
    return "nothing";
}

/// What loading throws: "UnknownVersion <text or null> <number>", "Truncated", "BadValue",
/// "UnknownClass", "nothing".
template <class Call>
std::string loadingThrows(Call call) {
    try {
        call();
    } catch (const mvArchive::UnknownVersion& error) {
        const char* text = error.text();
        return std::string("UnknownVersion ") + (text ? text : "null") + " " +
               std::to_string(error.number());
    } catch (const mvArchive::Truncated&) {
        return "Truncated";
    } catch (const mvArchive::BadValue&) {
        return "BadValue";
    } catch (const mvArchive::UnknownClass&) {
        return "UnknownClass";
    }
    return "nothing";
}

inline constexpr const char* kNoData = "Uninitialized: FrequencyBuffer has not been initialized";
inline constexpr const char* kSpent =
    "InvalidBuffer: Cannot access frequency data once inverse has been computed.";
inline constexpr const char* kTooLarge =
    "InvalidSize: Width and Height must be no larger than 2048.";
inline constexpr const char* kNotPowerOfTwo = "InvalidSize: Size must be a power of 2.";
inline constexpr const char* kOutOfBounds = "BadCoord: Coordinates are out of bounds";
inline constexpr const char* kUnbound = "UnboundWindow";

}  // namespace support
