// Whether programs have threads of their own.
#pragma once

namespace support {

#if defined(__EMSCRIPTEN__) && !defined(__EMSCRIPTEN_PTHREADS__)
inline constexpr bool kHasThreads = false;
#else
inline constexpr bool kHasThreads = true;
#endif

}  // namespace support
