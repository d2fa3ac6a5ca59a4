#ifndef VELTRANE_EXPORT_H
#define VELTRANE_EXPORT_H

/// Marks what crosses the boundary of the shared library. Everything else is hidden.
#if defined(_WIN32)
#if defined(VELTRANE_BUILDING)
#define VELTRANE_API __declspec(dllexport)
#else
#define VELTRANE_API __declspec(dllimport)
#endif
#else
#define VELTRANE_API __attribute__((visibility("default")))
#endif

/// Forward declarations of the XML parser's classes, in whatever versioned namespace it has.
#include <xercesc/util/XercesDefs.hpp>

static_assert(sizeof(XMLCh) == sizeof(char16_t), "the XML parser must deliver 16-bit text");

#endif
