// Marks what the system services export. They are a part of libmvbase.
#pragma once

#if (defined(_MSVC_LANG) ? _MSVC_LANG : __cplusplus) <= 201703L
#error "mvfreq needs C++20: compile with -std=c++20 or /std:c++20."
#endif

#if defined(MVBASE_STATIC)
#define VSYS_API
#elif defined(_WIN32)
#if defined(MVBASE_BUILDING)
#define VSYS_API __declspec(dllexport)
#else
#define VSYS_API __declspec(dllimport)
#endif
#else
#define VSYS_API [[gnu::visibility("default")]]
#endif
