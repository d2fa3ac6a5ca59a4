#include "documents/bounded_reader.h"
#include "documents/model_choice.h"
#include "files/failure.h"

#include <xercesc/sax2/Attributes.hpp>

#include <string>

namespace veltrane::host {
namespace {

/// Characters that a document of XML 1.1 can't hold as they are, or that a reader takes for line ends.
bool IsControl(char16_t c) {
    constexpr char16_t kLineSeparator = 0x2028;
    return (c < 0x20 && c != u'\t' && c != u'\n' && c != u'\r') || (c >= 0x7F && c < 0xA0) || c == kLineSeparator;
}

/// Writes a document anew from its events, without the models that aren't wanted.
class OneModelWriter : public BoundedHandlers {
public:
    explicit OneModelWriter(std::size_t place) : fPlace(place) {}

    std::string Text() const {
        if (fFailed) {
            throw Failure("a document with a fault has no models to choose from");
        }
        return (fNeedsXml11 ? "<?xml version=\"1.1\"?>" : "") + Utf8(fText);
    }

protected:
    void OnElement(const XMLCh* name, const xercesc::Attributes& attributes) override {
        if (Depth() == 2 && IsModelElement(name)) {
            fSkips = fModels++ != fPlace;
        }
        if (fSkips) {
            return;
        }
        (fText += u'<') += name;
        for (XMLSize_t at = 0; at < attributes.getLength(); ++at) {
            ((fText += u' ') += attributes.getQName(at)) += u"=\"";
            Append(attributes.getValue(at), u"&<>\"\t\n\r");
            fText += u'"';
        }
        fText += u'>';
    }

    void OnElementEnd(const XMLCh* name) override {
        if (!fSkips) {
            ((fText += u"</") += name) += u'>';
        }
        if (Depth() == 2) {
            fSkips = false;
        }
    }

    void OnText(std::u16string_view text) override {
        if (!fSkips) {
            Append(text, u"&<>\r");
        }
    }

    void OnEnd(const std::optional<DocumentFault>& fault) override { fFailed = fault.has_value(); }

private:
    /// @param marked ASCII characters that stand as references: markup, and white space that a reader would change;
    ///               control characters do too
    void Append(std::u16string_view text, std::u16string_view marked) {
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

    std::size_t fPlace;
    std::size_t fModels = 0;
    bool fSkips = false;
    bool fFailed = false;
    bool fNeedsXml11 = false; ///< for a character that XML 1.0 has no way to write
    std::u16string fText;     ///< whole, since an event may end within a character
};

} // namespace

std::string DocumentOfOneModel(std::istream& in, std::size_t place) {
    OneModelWriter writer(place);
    writer.Read(in);
    return writer.Text();
}

} // namespace veltrane::host
