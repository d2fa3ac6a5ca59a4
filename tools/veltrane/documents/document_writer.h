#ifndef VELTRANE_HOST_DOCUMENT_WRITER_H
#define VELTRANE_HOST_DOCUMENT_WRITER_H

#include "documents/bounded_reader.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veltrane::host {

/// Writes a document anew from its events, with changes.
class DocumentWriter : public BoundedHandlers {
public:
    /// UTF-8. Throws a `Failure` for a document with a fault.
    std::string Text() const;

protected:
    using Attributes = std::vector<std::pair<std::u16string, std::u16string>>;

    /// Called for each element that isn't within one that is left out.
    /// @param attributes as they will be written; may be changed
    /// @return whether it is written; else it is left out with all that it holds
    virtual bool Begin(std::u16string_view name, Attributes& attributes) = 0;

    /// Called behind the last child of each element that is written.
    virtual void End(std::u16string_view) {}

    /// The name that an element is written with.
    virtual const XMLCh* NameOf(const XMLCh* name) const { return name; }

    void WriteStart(std::u16string_view name, const Attributes& attributes);
    void WriteEnd(std::u16string_view name);

private:
    void OnElement(const XMLCh* name, const xercesc::Attributes& attributes) final;
    void OnElementEnd(const XMLCh* name) final;
    void OnText(std::u16string_view text) final;
    void OnEnd(const std::optional<DocumentFault>& fault) final { fFailed = fault.has_value(); }
    void Append(std::u16string_view text, std::u16string_view marked);

    std::size_t fLeftOut = 0; ///< the level of the element that is left out; 0 for none
    bool fFailed = false;
    bool fNeedsXml11 = false; ///< for a character that XML 1.0 has no way to write
    std::u16string fText;     ///< whole, since an event may end within a character
};

} // namespace veltrane::host

#endif
