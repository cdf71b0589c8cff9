// What the page wishes, of JavaScript's values.
#pragma once

#include <emscripten/val.h>

#include <vector>

#include "session.h"

/// The list `filters` of the settings: objects with `kind` and numbers.
std::vector<FilterSettings> filtersOf(const emscripten::val& settings);

/// What is made of the filtered picture.
ResultWish wishOf(const emscripten::val& settings);
