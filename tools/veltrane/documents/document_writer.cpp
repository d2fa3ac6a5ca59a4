#include "documents/document_writer.h"

#include "files/failure.h"

#include <xercesc/sax2/Attributes.hpp>

namespace veltrane::host {
namespace {

/// Characters that a document of XML 1.1 can't hold as they are, or that a reader takes for line ends.
bool IsControl(char16_t c) {
    constexpr char16_t kLineSeparator = 0x2028;
    return (c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r') || (c >= 0x7F && c < 0xA0) || c == kLineSeparator;
}

} // namespace

std::string DocumentWriter::Text() const {
    if (fFailed) {
        throw Failure("a document with a fault can't be written anew");
    }
    return (fNeedsXml11 ? "<?xml version=\"1.1\"?>" : "") + Utf8(fText);
}

void DocumentWriter::WriteStart(std::u16string_view name, const Attributes& attributes) {
    (fText += u'<') += name;
    for (const auto& [attribute, value] : attributes) {
        ((fText += u' ') += attribute) += u"=\"";
        Append(value, u"&<>\"\t\n\r");
        fText += u'"';
    }
    fText += u'>';
}

void DocumentWriter::WriteEnd(std::u16string_view name) {
    ((fText += u"</") += name) += u'>';
}

void DocumentWriter::OnElement(const XMLCh* name, const xercesc::Attributes& attributes) {
    if (fLeftOut > 0) {
        return;
    }
    Attributes written;
    written.reserve(attributes.getLength());
    for (XMLSize_t at = 0; at < attributes.getLength(); ++at) {
        written.emplace_back(attributes.getQName(at), attributes.getValue(at));
    }
    if (Begin(name, written)) {
        WriteStart(NameOf(name), written);
    } else {
        fLeftOut = Depth();
    }
}

void DocumentWriter::OnElementEnd(const XMLCh* name) {
    if (fLeftOut == 0) {
        End(name);
        WriteEnd(NameOf(name));
    } else if (fLeftOut == Depth()) {
        fLeftOut = 0;
    }
}

void DocumentWriter::OnText(std::u16string_view text) {
    if (fLeftOut == 0) {
        Append(text, u"&<>\r");
    }
}

/// @param marked ASCII characters that stand as references: markup, and white space that a reader would change;
///               control characters do too
void DocumentWriter::Append(std::u16string_view text, std::u16string_view marked) {
    for (const char16_t c : text) {
        if (marked.find(c) == marked.npos && !IsControl(c)) {
            fText += c;
            continue;
        }
        fNeedsXml11 = fNeedsXml11 || (c < 0x20 && IsControl(c));
        fText += u"&#";
        for (const char digit : std::to_string(static_cast<int>(c))) {
            fText += static_cast<char16_t>(digit);
        }
        fText += u';';
    }
}

} // namespace veltrane::host
