#ifndef MCXML_900_KORDMBCONVERTER_H
#define MCXML_900_KORDMBCONVERTER_H

#include <veltrane_export.h>

struct UConverter;

/// Converters between a code page and Unicode. A converter is an ICU `UConverter*`, handled as `void*`; whoever makes
/// one owns it and releases it with `ucnv_close`. A converter has state: it belongs to one thread at a time.
///
/// Every converter made here replaces what it can't convert by '?', and tells its conversions so.
namespace MCXML_900 {

/// Makes a converter by the name of its encoding.
/// @param name plain text: an ICU name or alias; a decimal number from 1 to 99999, read as the number of a Windows code
///             page; null for one like the default converter
/// @return the converter, owned by the caller; null for an unknown name and for any other failure
VELTRANE_API void* KORDMBConverterNew_C(const char* name);

/// The same for a name in UTF-8. A name of more than 59 bytes is cut to a whole character and filled with blanks.
/// @return as KORDMBConverterNew_C; null, too, for a name that can't be converted
VELTRANE_API void* KORDMBConverterNew_8(const char* name);

/// KORDMBConverterNew_8 in UTF-8 mode, otherwise KORDMBConverterNew_C.
VELTRANE_API void* KORDMBConverterNew_A(const char* name);

/// The converter of the process's code page, which every conversion without a converter of its own clones. It is made
/// on first use, from the C locale as it is then, and lives to the end of the process; setting the locale afterwards
/// doesn't change it. The plain C locale, and a locale whose encoding ICU doesn't know, have ICU's own default, UTF-8
/// on Linux.
/// @return borrowed, never to be used but for cloning; null when ICU can't make one
VELTRANE_API UConverter* KORDMBGetDefaultConverter();

/// The number of the default converter: 0 before there is one, raised by one each time one is made. Text that was
/// converted under another number is out of date.
VELTRANE_API int KORDMBDefaultConverterID();

} // namespace MCXML_900

#endif
