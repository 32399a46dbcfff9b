#pragma once

/// TROVENU_API marks what a client of the library may use: exported classes and free functions. Everything
/// else is hidden in a shared library. TROVENU_STATIC is defined for clients of a static library,
/// TROVENU_BUILDING while a shared one is compiled; the build sets both.
#if defined(TROVENU_STATIC)
#define TROVENU_API
#elif defined(_WIN32) && defined(TROVENU_BUILDING)
#define TROVENU_API __declspec(dllexport)
#elif defined(_WIN32)
#define TROVENU_API __declspec(dllimport)
#else
#define TROVENU_API __attribute__((visibility("default")))
#endif
