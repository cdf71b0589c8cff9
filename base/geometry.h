// Everything geometric that images are described with.
#pragma once

#include <base/matrix.h>  // IWYU pragma: export
#include <base/pair.h>    // IWYU pragma: export
#include <base/radian.h>  // IWYU pragma: export
#include <base/xform.h>   // IWYU pragma: export
