#pragma once

/// VYN_API marks what the shared library exports; everything else stays hidden inside it.
#if defined(_WIN32)
#if defined(VYN_BUILDING_LIBRARY)
#define VYN_API __declspec(dllexport)
#else
#define VYN_API __declspec(dllimport)
#endif
#else
#define VYN_API __attribute__((visibility("default")))
#endif
