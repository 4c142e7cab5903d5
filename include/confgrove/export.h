// SPDX-License-Identifier: MIT
// CONFGROVE_API marks what the library exports. The build defines CONFGROVE_STATIC for a static
// library and its users, and CONFGROVE_EXPORTS while it compiles a shared one.
//
// CONFGROVE_COLD marks what runs rarely, for instance where something is wrong: a host shouldn't
// wait for a compiler that makes it fast.
#ifndef CONFGROVE_EXPORT_H
#define CONFGROVE_EXPORT_H

#if defined(_WIN32)
#if defined(CONFGROVE_STATIC)
#define CONFGROVE_API
#elif defined(CONFGROVE_EXPORTS)
#define CONFGROVE_API __declspec(dllexport)
#else
#define CONFGROVE_API __declspec(dllimport)
#endif
#else
#define CONFGROVE_API __attribute__((visibility("default")))
#endif

#if defined(__GNUC__)
#define CONFGROVE_COLD __attribute__((cold))
#else
#define CONFGROVE_COLD
#endif

#endif
