// Marks what libmvfreq exports.
#pragma once

#if (defined(_MSVC_LANG) ? _MSVC_LANG : __cplusplus) <= 201703L
#error "mvfreq needs C++20: compile with -std=c++20 or /std:c++20."
#endif

#if defined(MVFREQ_STATIC)
#define MVFREQ_API
#elif defined(_WIN32)
#if defined(MVFREQ_BUILDING)
#define MVFREQ_API __declspec(dllexport)
#else
#define MVFREQ_API __declspec(dllimport)
#endif
#else
#define MVFREQ_API [[gnu::visibility("default")]]
#endif
