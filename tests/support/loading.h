// What loading a record gives, and what it throws.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/archive_record.h"

namespace archive {

using support::hex;
using support::Loading;

/// Loads `value` and expects that no byte is left.
template <class T>
void load(const std::string& bytes, T& value) {
    Loading loading(bytes);
    loading.archive() || value;
    EXPECT_EQ(loading.rest(), 0U);
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

template <class T>
std::string loadingThrows(const std::string& bytes, T& value) {
    return loadingThrows([&] {
        Loading loading(bytes);
        loading.archive() || value;
    });
}

}  // namespace archive
