#ifndef MCXML_900_KORDMBSTRING_H
#define MCXML_900_KORDMBSTRING_H

#include <veltrane_export.h>

#include <cstddef>

/// The byte-string functions of the C library, rewritten so that they never split a character.
///
/// They come in three families. `_C` reads the code page of the C library's locale, judged as the locale stands at the
/// call, and decodes through the library's default converter; no character of it is longer than 2 bytes here. `_8`
/// reads UTF-8. `_A` is one of them by qUTF8mode(), and the one to call unless the encoding is known.
///
/// All texts are NUL-terminated; none is read behind its NUL, whatever length is given. Any negative length means up to
/// the NUL. A null text counts as empty unless told otherwise, and a null pointer comes back where one would be moved.
/// Nothing throws and nothing allocates, apart from the default converter on its first use. An invalid sequence is
/// taken byte by byte.
namespace MCXML_900 {

/// Chooses the encoding of the `_A` family for the process, at its start: UTF-8 for any value but 0, else the code
/// page.
VELTRANE_API void SetUTF8mode(int mode);
/// @return 1 in UTF-8 mode, which is where a process begins, else 0
VELTRANE_API int qUTF8mode();

/// Where it isn't 0, each function of the `_C` family that has a twin in the C library does on bytes what that one
/// does. 0 at the start; nothing in the library sets it. A host may, before its first thread, when its code page has
/// single bytes only.
extern VELTRANE_API int gSingleByteCodePage;

/// The length of the character at `s`, by the C library (`mblen`).
/// @param n how many bytes may be looked at; negative up to the NUL
/// @return bytes; 0 for an empty or null text, -1 when no whole character stands there, n = 0 included
VELTRANE_API int KORDMBmblen_C(const char* s, int n);
/// The length of the character at `s`, strictly: no surrogates, no noncharacters, no overlong form.
/// @param n how many bytes may be looked at; negative up to the NUL
/// @return bytes; 0 for an empty or null text or n = 0, -1 for an invalid sequence
VELTRANE_API int KORDMBmblen_8(const char* s, int n);

/// The length of the character at `s` by its first byte alone. The terminator is a character of 1 byte.
/// @return 1 or 2, never beyond the NUL; 0 for null
VELTRANE_API int KORDMBmbclen_C(const char* s);
/// @return 1 to 4, never beyond the NUL; 0 for null
VELTRANE_API int KORDMBmbclen_8(const char* s);

/// Whether a byte begins a character of several bytes in the code page.
VELTRANE_API bool KORDMBIsLeadByte_C(unsigned char byte);

/// The character behind the one at `s`: `s` and the length that KORDMBmbclen gives, so behind the terminator, too.
VELTRANE_API const char* KORDMBstrinc_C(const char* s);
VELTRANE_API const char* KORDMBstrinc_8(const char* s);
VELTRANE_API const char* KORDMBstrinc_A(const char* s);

/// The character before `current`.
/// @param start   the start of the text, which must be the start of a character
/// @param current a place in the same text
/// @return a place in the text; `current` when it isn't behind `start`, or one of them is null
VELTRANE_API const char* KORDMBAnsiPrev_C(const char* start, const char* current);
VELTRANE_API const char* KORDMBAnsiPrev_8(const char* start, const char* current);
VELTRANE_API const char* KORDMBAnsiPrev_A(const char* start, const char* current);

/// The start of the character that holds the byte at `pos`.
/// @return an index: that of the lead byte for a trail byte, the length of the text for a `pos` behind it, else `pos`;
///         0 for null
VELTRANE_API int KORDMBFindStart_C(const char* s, int pos);

/// The index of the character before index `i`. Where no proper character ends there (a surrogate, a noncharacter, an
/// invalid sequence) it is the byte before.
/// @param i an index up to the length of the text
/// @return an index; `i` itself when it is below 1 or `s` is null
VELTRANE_API int KORDMBPreviousIndex_8(const char* s, int i);

/// Copies at most `n` bytes and doesn't split a character, then fills the rest of the target, up to `n`, with NUL. The
/// result isn't terminated when exactly `n` bytes were taken. A last character that is invalid is left out: in the code
/// page one, in UTF-8 as many as stand at the end. Source and target may overlap.
/// @param n bytes in the target; negative: the target has room for the whole text and one NUL
/// @return `dst`, untouched when it is null, `n` is 0 or, in the code page, `src` is null; in UTF-8 a null `src` is
///         empty
VELTRANE_API char* KORDMBstrncpy_C(char* dst, const char* src, int n);
VELTRANE_API char* KORDMBstrncpy_8(char* dst, const char* src, int n);
VELTRANE_API char* KORDMBstrncpy_A(char* dst, const char* src, int n);

/// Finds the first, or the last, occurrence of a character.
/// @param ch in UTF-8 a code point, in the code page a byte, of which the low 8 bits count; 0 finds the terminator
/// @return its place, or null
VELTRANE_API const char* KORDMBstrchr_C(const char* s, unsigned int ch);
VELTRANE_API const char* KORDMBstrchr_8(const char* s, unsigned int ch);
VELTRANE_API const char* KORDMBstrchr_A(const char* s, unsigned int ch);
VELTRANE_API const char* KORDMBstrrchr_C(const char* s, unsigned int ch);
VELTRANE_API const char* KORDMBstrrchr_8(const char* s, unsigned int ch);
VELTRANE_API const char* KORDMBstrrchr_A(const char* s, unsigned int ch);

/// The bytes of the longest start of `s` that holds no character of `reject`. A byte that can't be decoded stands for
/// the character of its own number.
/// @return 0 to the length of `s`
VELTRANE_API std::size_t KORDMBstrcspn_C(const char* s, const char* reject);
VELTRANE_API std::size_t KORDMBstrcspn_8(const char* s, const char* reject);
VELTRANE_API std::size_t KORDMBstrcspn_A(const char* s, const char* reject);

/// The order of two texts without regard to case: of their code points, folded one by one. A byte that can't be decoded
/// stands for itself, unfolded.
/// @param n how many bytes of each count, as far as they have as many
/// @return -1, 0 or 1
VELTRANE_API int KORDMBstrnicmp_C(const char* a, const char* b, int n);
VELTRANE_API int KORDMBstrnicmp_8(const char* a, const char* b, int n);
VELTRANE_API int KORDMBstrnicmp_A(const char* a, const char* b, int n);

/// Whether two texts are equal without regard to case, as KORDMBstrnicmp compares.
/// @param aLength,bLength bytes that count
/// @param status may be null; 0, or 3 when a byte before the first difference, or in it, can't be decoded
/// @return 1 when equal, else 0
VELTRANE_API int KORDMBqstricmp_C(const char* a, int aLength, const char* b, int bLength, int* status);
VELTRANE_API int KORDMBqstricmp_8(const char* a, int aLength, const char* b, int bLength, int* status);
VELTRANE_API int KORDMBqstricmp_A(const char* a, int aLength, const char* b, int bLength, int* status);

/// Decodes one code point of the code page.
/// @param out the code point, 0 when there is none
/// @param pos the index where it begins
/// @param end the index where the text ends; negative for its NUL
/// @return bytes consumed; 0 at the end or for null or a negative `pos`; -1 when the bytes can't be decoded
VELTRANE_API int KORDMBU32Get_C(unsigned int* out, const char* s, int pos, int end);

} // namespace MCXML_900

#endif
