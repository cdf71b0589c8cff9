// Marks what libmvbase exports.
#pragma once

#if defined(MVBASE_STATIC)
#define MVBASE_API
#elif defined(_WIN32)
#if defined(MVBASE_BUILDING)
#define MVBASE_API __declspec(dllexport)
#else
#define MVBASE_API __declspec(dllimport)
#endif
#else
#define MVBASE_API [[gnu::visibility("default")]]
#endif
