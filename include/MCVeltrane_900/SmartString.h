#ifndef MCVELTRANE_900_SMARTSTRING_H
#define MCVELTRANE_900_SMARTSTRING_H

#include <veltrane_export.h>

#include <cstddef>
#include <string>

namespace MCVeltrane_900 {

/// Owner of a NUL-terminated UTF-16 text of the XML parser. The unset string holds null.
///
/// Byte texts are read in the local code page, as the parser's `XMLString::transcode` does. Text that is no plain
/// ASCII needs the XML platform to be running. No conversion throws: it stops where the parser's transcoder fails.
class VELTRANE_API SmartString {
public:
    SmartString();
    /// Null gives the unset string, in all these forms.
    SmartString(const char* text);
    SmartString(const XMLCh* text);
    SmartString(const SmartString& other);
    ~SmartString();

    void assign(const char* text);
    void assign(const XMLCh* text);
    void assign(const SmartString& other);
    /// A text of one character.
    void assign(XMLCh character);
    SmartString& operator=(const char* text);
    SmartString& operator=(const XMLCh* text);
    SmartString& operator=(const SmartString& other);

    /// Null or empty text leaves the string as it is, an unset one unset.
    void append(const XMLCh* text);
    void append(const char* text);
    void append(const SmartString& other);
    void append(XMLCh character);

    /// Becomes the unset string.
    void clear();

    /// @return units before the NUL; 0 for the unset string
    std::size_t length() const;
    /// @return true for the unset and for the empty string
    bool empty() const;
    /// @return the text, owned by this string and valid until it changes; null when unset
    const XMLCh* xc_str() const;

    /// Null and empty are equal here.
    bool equals(const XMLCh* text) const;
    /// False when either side is unset: two unset strings are not equal.
    bool equals(const SmartString& other) const;
    bool operator==(const SmartString& other) const;

    /// @return the decimal number, modulo 2 to the 32nd; 0 when any unit is not a digit, a sign included
    unsigned int convertToInteger() const;

    /// Takes a UTF-8 text, in chunks of 1000 units; empty text gives the unset string. At a byte that is not UTF-8
    /// the chunks before stay.
    void assignUTF8(const std::string& text);
    /// @return the text in UTF-8; where it cannot be transcoded, the chunks before
    std::string toUTF8() const;

    /// Removes units from the end.
    /// @param n how many to remove; above the length, all
    void truncateString(unsigned int n);

    /// @return whether `text` occurs in this string; false for null or on the unset string
    bool ContainsString(const XMLCh* text) const;

    /// Replaces `from` by `to` and steps on by the length of `to` plus one, which is exact only when `from` is one
    /// unit longer than `to`: otherwise units behind a replacement are skipped or seen twice.
    /// @param to null counts as the empty text
    /// @return the number of replacements
    int replaceSubstring(const XMLCh* from, const XMLCh* to);

private:
    XMLCh* fText;
};

} // namespace MCVeltrane_900

#endif
