// Marks what libmvbase exports.
#pragma once

#include <vsys/export.h>

#define MVBASE_API VSYS_API
