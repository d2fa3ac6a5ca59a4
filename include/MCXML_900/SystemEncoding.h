#ifndef MCXML_900_SYSTEMENCODING_H
#define MCXML_900_SYSTEMENCODING_H

#include <veltrane_export.h>

#include <string>

/// The locale and the encoding that the process runs in. Setting a locale changes the whole process: the first call of
/// either function belongs before the process's other threads begin.
namespace MCXML_900 {

/// Moves a process that is in the plain "C" locale to a US English one, once per process: "en_US", or "en_US.UTF-8" and
/// then "C.UTF-8" where it isn't installed. The environment variable LC_ALL gets the same name. A process that has set
/// a locale of its own keeps it.
VELTRANE_API void EnableLocale();

/// The encoding in the name of the process's locale, after EnableLocale(): what stands behind its first '.', "CP1252"
/// for a name without one. Found once and kept for the process.
VELTRANE_API const std::string& SystemEncoding();

} // namespace MCXML_900

#endif
