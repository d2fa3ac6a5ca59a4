#include "documents/document_file.h"
#include "documents/document_writer.h"
#include "documents/model_choice.h"

#include <string>

namespace veltrane::host {
namespace {

/// Leaves out the models that aren't wanted.
class OneModelWriter : public DocumentWriter {
public:
    explicit OneModelWriter(std::size_t place) : fPlace(place) {}

protected:
    bool Begin(std::u16string_view name, Attributes&) override {
        return Depth() != 2 || !IsModelElement(name) || fModels++ == fPlace;
    }

private:
    std::size_t fPlace;
    std::size_t fModels = 0;
};

class UnprefixedWriter : public DocumentWriter {
    bool Begin(std::u16string_view, Attributes&) override { return true; }
    const XMLCh* NameOf(const XMLCh* name) const override { return WithoutPrefix(name); }
};

} // namespace

std::string DocumentOfOneModel(std::istream& in, std::size_t place) {
    OneModelWriter writer(place);
    writer.Read(in);
    return writer.Text();
}

DocumentOutline ReadPmmlOutline(DocumentFile& document) {
    DocumentOutline outline = ReadOutline(document.Stream());
    if (outline.fault || !outline.hasPrefixes) {
        return outline;
    }
    UnprefixedWriter writer;
    writer.Read(document.Stream());
    document.Replace(writer.Text());
    return ReadOutline(document.Stream());
}

} // namespace veltrane::host
