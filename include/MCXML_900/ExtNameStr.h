#ifndef MCXML_900_EXTNAMESTR_H
#define MCXML_900_EXTNAMESTR_H

#include <veltrane_export.h>

#include <string>

namespace MCXML_900 {

/// One name in all forms of text at once: UTF-8, which the others are made from, UTF-16, the code page of the default
/// converter and the encoding of the system (SystemEncoding()). The forms are made when the name is set, and read for
/// nothing; those of the code page and of the system are made again when there is another default converter.
///
/// What can't be converted is a '?', and ErrorCode() says so. An object belongs to one thread at a time, reading
/// included.
class VELTRANE_API ExtNameStr {
public:
    /// The empty name.
    ExtNameStr();
    ExtNameStr(const ExtNameStr& other);
    ~ExtNameStr();
    ExtNameStr& operator=(const ExtNameStr& other);

    void SetU8(const std::string& text);
    void SetU16(const std::u16string& text);
    /// UTF-8 in UTF-8 mode, else the code page.
    void SetGeneric(const std::string& text);
    /// @param converter the code page of the text, null for the default; the caller's own
    void SetCP(const std::string& text, void* converter = nullptr);
    /// Keeps the text itself as the form of the system, whether or not the name's other forms can be made of it.
    void SetSystem(const std::string& text);
    void Clear();

    // The references and pointers are valid until the name is set or, but for UTF-8 and UTF-16, read again.

    const std::string& GetU8() const;
    const std::u16string& GetU16() const;
    const std::string& GetGeneric() const;
    const std::string& GetCP() const;
    /// The name in a code page of the caller's own; sets ErrorCode() to the status of this conversion.
    /// @param converter null for the default
    std::string GetCP(void* converter) const;
    const std::string& GetSystem() const;

    const char* GetU8Z() const;
    const char16_t* GetU16Z() const;
    const char* GetGenericZ() const;
    const char* GetCPZ() const;
    const char* GetSystemZ() const;

    /// Whether the UTF-8 form is empty.
    bool Empty() const;

    /// The status of the first conversion that wasn't clean when the name was last set: 0 none, otherwise as the
    /// conversions of KORDMBTranscode.h report. The form that was set comes first, then the code page.
    int ErrorCode() const;

private:
    struct Forms;
    Forms* fForms;
};

} // namespace MCXML_900

#endif
