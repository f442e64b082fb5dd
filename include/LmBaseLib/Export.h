#pragma once

/// Marks what the shared library exports; everything else stays hidden.
#if defined(_WIN32)
#if defined(LMIMAGINGLIB_BUILD)
#define LM_EXPORT __declspec(dllexport)
#else
#define LM_EXPORT __declspec(dllimport)
#endif
#else
#define LM_EXPORT __attribute__((visibility("default")))
#endif
