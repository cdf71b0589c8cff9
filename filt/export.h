// Marks what libmvfreq exports.
#pragma once

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
