// Marks what the system services export. They are a part of libmvbase.
#pragma once

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
