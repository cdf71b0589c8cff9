// Whether a sanitizer slows this build down, so that the largest sizes can be left to the others.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define MVFREQ_TEST_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define MVFREQ_TEST_SANITIZED 1
#endif
#endif

namespace support {

#if defined(MVFREQ_TEST_SANITIZED)
inline constexpr bool kSanitized = true;
#else
inline constexpr bool kSanitized = false;
#endif

/// Planes with more elements than this are tested in builds without sanitizers only.
inline constexpr long kLargestArea = kSanitized ? 1L << 16 : 1L << 22;

}  // namespace support
