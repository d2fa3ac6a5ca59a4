#ifndef VELTRANE_FACTORY_XML_TEXT_H
#define VELTRANE_FACTORY_XML_TEXT_H

#include <veltrane_export.h>

#include <string>

namespace veltrane::factory {

/// UTF-8 and the XML parser's text. Neither depends on the locale or on the XML platform, and neither fails: what isn't
/// well-formed becomes U+FFFD.
std::string ToUtf8(const XMLCh* text);
std::u16string ToUtf16(const std::string& text);

} // namespace veltrane::factory

#endif
