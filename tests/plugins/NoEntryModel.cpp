#include <veltrane_export.h>

/// A library that is no plug-in: it doesn't export GiveMyTranslator.

extern "C" VELTRANE_API int NotAPlugin() {
    return 1;
}
