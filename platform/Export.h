// What leaves the shared library. Everything else is hidden.
//   ZDM_API        functions, and classes with bodies in the library: exported when the library is
//                  built, imported when it is used.
//   ZDM_INTERFACE  abstract classes and types without bodies: one identity across modules for
//                  exceptions and type checks; nothing to import on Windows.
#pragma once

#if __cplusplus < 202002L
#error "zdm needs C++20: compile with -std=c++20, or link the CMake target zdm::zdm"
#endif

#if defined(_WIN32)
#if defined(ZDM_BUILDING)
#define ZDM_API __declspec(dllexport)
#else
#define ZDM_API __declspec(dllimport)
#endif
#define ZDM_INTERFACE
#else
#define ZDM_API __attribute__((visibility("default")))
#define ZDM_INTERFACE __attribute__((visibility("default")))
#endif
