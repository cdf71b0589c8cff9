// What loading a record gives, and what it throws.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/archive_record.h"
#include "support/thrown.h"

namespace archive {

using support::hex;
using support::Loading;
using support::loadingThrows;

/// Loads `value` and expects that no byte is left.
template <class T>
void load(const std::string& bytes, T& value) {
    Loading loading(bytes);
    loading.archive() || value;
    EXPECT_EQ(loading.rest(), 0U);
}

template <class T>
std::string loadingThrows(const std::string& bytes, T& value) {
    return loadingThrows([&] {
        Loading loading(bytes);
        loading.archive() || value;
    });
}

}  // namespace archive
