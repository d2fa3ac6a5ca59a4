#ifndef MCXML_900_KORDMBTRANSCODE_H
#define MCXML_900_KORDMBTRANSCODE_H

#include <veltrane_export.h>

#include <string>

/// Conversions between the three forms of text, UTF-8, UTF-16 and the code page, and the generic form, which is UTF-8
/// in UTF-8 mode (qUTF8mode()) and the code page otherwise.
///
/// A converter stands for the code page; null is a private clone of the default converter, so any number of threads may
/// convert at once. A converter of the caller's own is used as it is, after a reset, and belongs to one thread at a
/// time.
///
/// Every conversion reports a status and none throws:
///
/// | Status | Meaning |
/// |---|---|
/// | 0 | success |
/// | 1 | the target was too small: the result is cut |
/// | 2 | no memory; the target string is empty |
/// | 3 | a character couldn't be converted and is a '?' in the result, or another failure |
namespace MCXML_900 {

// On strings. `out` may be the same object as `in`.

/// @param converter the code page, null for the default
/// @param out       receives the text
/// @return the status
VELTRANE_API int KORDMBU8ToCodePage(void* converter, std::string& out, const std::string& in);
VELTRANE_API int KORDMBCodePageToU8(void* converter, std::string& out, const std::string& in);
VELTRANE_API int KORDMBU16ToCodePage(void* converter, std::string& out, const std::u16string& in);
VELTRANE_API int KORDMBCodePageToU16(void* converter, std::u16string& out, const std::string& in);
VELTRANE_API int KORDMBGenericToCodePage(void* converter, std::string& out, const std::string& in);
VELTRANE_API int KORDMBCodePageToGeneric(void* converter, std::string& out, const std::string& in);
VELTRANE_API int KORDMBU8ToGeneric(void* converter, std::string& out, const std::string& in);
VELTRANE_API int KORDMBGenericToU8(void* converter, std::string& out, const std::string& in);
VELTRANE_API int KORDMBU16ToGeneric(void* converter, std::string& out, const std::u16string& in);
VELTRANE_API int KORDMBGenericToU16(void* converter, std::u16string& out, const std::string& in);

/// Between the two forms of Unicode no code page is needed.
/// @param converter ignored
VELTRANE_API int KORDMBU16ToU8(void* converter, std::string& out, const std::u16string& in);
VELTRANE_API int KORDMBU8ToU16(void* converter, std::u16string& out, const std::string& in);
VELTRANE_API int KORDMBU16ToU8(std::string& out, const std::u16string& in);
VELTRANE_API int KORDMBU8ToU16(std::u16string& out, const std::string& in);

/// With the default converter.
VELTRANE_API int KORDMBU8ToGeneric(std::string& out, const std::string& in);
VELTRANE_API int KORDMBGenericToU8(std::string& out, const std::string& in);
VELTRANE_API int KORDMBU16ToGeneric(std::string& out, const std::u16string& in);
VELTRANE_API int KORDMBGenericToU16(std::u16string& out, const std::string& in);

// On buffers, which take no memory.
//
// The target is a field of fixed width. A text that is too long is cut to whole characters, and the rest of the field
// is filled with blanks (bytes of 32, UTF-16 units of 32). A text with a stated length that is shorter than the field
// gets one blank behind it. A NUL-terminated text gets a terminator: behind it, or, when it is cut, in the last place
// of the field, which is kept for that. Nothing is written to a target without room.
//
// Where the generic form is the other form itself, the bytes are copied: as many as fit, wherever that cuts, with a
// terminator for a NUL-terminated text when there is room for it, and the status is 0.

/// @param converter    the code page, null for the default
/// @param target       the field; may be null when its size is 0
/// @param targetSize   its units; one that isn't positive means none
/// @param source       the text; null without length is an empty text, otherwise a failure
/// @param sourceLength its units, negative for a NUL-terminated text
/// @param status       receives the status; may be null
/// @return the units of the text in the target, without blanks and terminator
VELTRANE_API int KORDMB8toCodePage(void* converter, char* target, int targetSize, const char* source, int sourceLength,
                                   int* status);
VELTRANE_API int KORDMBCodePageto8(void* converter, char* target, int targetSize, const char* source, int sourceLength,
                                   int* status);
VELTRANE_API int KORDMB16toCodePage(void* converter, char* target, int targetSize, const char16_t* source,
                                    int sourceLength, int* status);
VELTRANE_API int KORDMBCodePageto16(void* converter, char16_t* target, int targetSize, const char* source,
                                    int sourceLength, int* status);
VELTRANE_API int KORDMBGenerictoCodePage(void* converter, char* target, int targetSize, const char* source,
                                         int sourceLength, int* status);
VELTRANE_API int KORDMBCodePagetoGeneric(void* converter, char* target, int targetSize, const char* source,
                                         int sourceLength, int* status);
VELTRANE_API int KORDMB8toGeneric(void* converter, char* target, int targetSize, const char* source, int sourceLength,
                                  int* status);
VELTRANE_API int KORDMBGenericto8(void* converter, char* target, int targetSize, const char* source, int sourceLength,
                                  int* status);
VELTRANE_API int KORDMB16toGeneric(void* converter, char* target, int targetSize, const char16_t* source,
                                   int sourceLength, int* status);
VELTRANE_API int KORDMBGenericto16(void* converter, char16_t* target, int targetSize, const char* source,
                                   int sourceLength, int* status);

/// Between the two forms of Unicode; parameters and result as above.
VELTRANE_API int KORDMB16to8(char* target, int targetSize, const char16_t* source, int sourceLength, int* status);
VELTRANE_API int KORDMB8to16(char16_t* target, int targetSize, const char* source, int sourceLength, int* status);

// Into new memory, with the default converter. A character that can't be converted is a '?'.

/// @param text NUL-terminated
/// @return a NUL-terminated text that the caller releases with `delete[]`; null for null, and when there is no memory
VELTRANE_API char* KORDMBTranscodeU8(const char16_t* text);
VELTRANE_API char16_t* KORDMBTranscodeU8(const char* text);
VELTRANE_API char* KORDMBTranscodeCodePage(const char16_t* text);
VELTRANE_API char16_t* KORDMBTranscodeCodePage(const char* text);
/// UTF-8 or the code page, by UTF-8 mode.
VELTRANE_API char* KORDMBTranscodeGeneric(const char16_t* text);
VELTRANE_API char16_t* KORDMBTranscodeGeneric(const char* text);

} // namespace MCXML_900

#endif
