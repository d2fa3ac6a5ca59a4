#ifndef VELTRANE_TRANSLATORS_LOCAL_TEXT_H
#define VELTRANE_TRANSLATORS_LOCAL_TEXT_H

#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>
#include <string>
#include <string_view>

/// Text between the XML parser's UTF-16 and the bytes of the process's code page, as XMLString::transcode converts it.
/// Plain ASCII has the same codes in every code page of a process, so it is copied without a converter.
namespace veltrane::translators {

/// The document's text in the code page; empty for null.
std::string LocalText(const XMLCh* text);

/// The same without a string for short ASCII texts, as numbers are.
class LocalView {
public:
    explicit LocalView(const XMLCh* text);
    LocalView(const LocalView&) = delete;
    LocalView& operator=(const LocalView&) = delete;

    std::string_view Get() const { return fView; }

private:
    char fShort[64];
    std::string fLong;
    std::string_view fView;
};

/// A name in UTF-16, to search the document with.
class WideName {
public:
    explicit WideName(const std::string& name);
    ~WideName();
    WideName(const WideName&) = delete;
    WideName& operator=(const WideName&) = delete;

    const XMLCh* Get() const { return fLong ? fLong : fShort; }

private:
    XMLCh fShort[64];
    XMLCh* fLong;
};

} // namespace veltrane::translators

#endif
