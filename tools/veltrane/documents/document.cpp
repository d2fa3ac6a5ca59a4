#include "documents/document.h"

#include "documents/document_file.h"
#include "documents/document_outline.h"
#include "documents/explanation.h"
#include "documents/kord_document.h"
#include "documents/model_list.h"
#include "files/failure.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>
#include <MCVeltrane_900/VTException.h>

#include <fmt/format.h>

#include <kit/model/transformations.h>

namespace veltrane::host {

namespace {

constexpr int kMissingNode = static_cast<int>(MCVeltrane_900::Message::MISSING_NODE);
constexpr const char* kDerivedFields = "TransformationDictionary";

/// Receives an object through a pointer argument. It is owned even where the call that made it throws in the end.
template <typename T>
struct OutPointer {
    explicit OutPointer(std::unique_ptr<T>& owner) : owner(owner) {}
    ~OutPointer() { HandOver(); }
    OutPointer(const OutPointer&) = delete;
    OutPointer& operator=(const OutPointer&) = delete;

    void HandOver() {
        if (pointer) {
            owner.reset(pointer);
        }
        pointer = nullptr;
    }

    std::unique_ptr<T>& owner;
    T* pointer = nullptr;
};

} // namespace

Document::Document() = default;
Document::Document(Document&&) noexcept = default;
Document::~Document() = default;

namespace {

/// Without fields when the document is no PMML.
Document ReadPmml(DocumentFile& file, const std::string& encoding) {
    Document document;
    OutPointer<MCVeltrane_900::ScoreDictionary> fields(document.fields);
    try {
        document.derivedFields.reset(
            MCVeltrane_900::ModelFactory::GetTransformationDictionaryFromXML(file.Stream(), fields.pointer, encoding));
    } catch (const MCVeltrane_900::VTException& failure) {
        throw ExplainedFailure(ToldText(failure), Explain(failure, file, {}));
    }
    fields.HandOver();
    document.isPmml = document.fields != nullptr;
    return document;
}

Failure AnotherRoot(DocumentFile& file, const char* what) {
    return Failure(fmt::format("{}: the document is {}: its root element is \"{}\"", file.Name(), what,
                               ReadOutline(file.Stream()).root));
}

} // namespace

Document ReadDocument(const std::string& path, const std::string& encoding) {
    StartLibrary();
    DocumentFile file(path, kCannotOpenDocument);
    Document document = ReadPmml(file, encoding);
    if (!document.fields) {
        throw AnotherRoot(file, "no PMML");
    }
    return document;
}

Document ReadAnyDocument(DocumentFile& file, const std::string& encoding) {
    Document document = ReadPmml(file, encoding);
    if (!document.fields) {
        document.fields = ReadKordDictionary(file, encoding);
    }
    if (!document.fields) {
        throw AnotherRoot(file, "neither PMML nor kord-ml");
    }
    return document;
}

StandardFields ReadStandardFields(const std::string& path, const std::string& encoding) {
    StartLibrary();
    DocumentFile file(path, kCannotOpenDocument);
    const DocumentOutline outline = ReadPmmlOutline(file);
    StandardFields read{ReadTransformations(file, outline, encoding), MissingTextsIn(encoding, outline)};
    RequireDerivedFields(!read.transformations->Derived().IsEmpty(), path);
    return read;
}

std::unique_ptr<veltrane_kit::Transformations> ReadTransformations(DocumentFile& file, const DocumentOutline& outline,
                                                                   const std::string& encoding) {
    if (outline.fault) {
        ReadPmml(file, encoding); // which refuses it in the library's words
    }
    std::unique_ptr<veltrane_kit::Transformations> read;
    try {
        read = veltrane_kit::Transformations::Read(file.Stream(), encoding);
    } catch (const MCVeltrane_900::VTException& failure) {
        throw ExplainedFailure(ToldText(failure), Explain(failure, file, {}));
    }
    if (read == nullptr) {
        throw AnotherRoot(file, "no PMML");
    }
    if (!outline.elements.contains(kDerivedFields)) {
        throw ExplainedFailure(ToldText(kMissingNode, kDerivedFields), ExplainMissingNode(file, outline));
    }
    return read;
}

void RequireDerivedFields(bool hasDerivedFields, const std::string& path) {
    if (!hasDerivedFields) {
        throw Failure(path + ": the document has no derived fields");
    }
}

} // namespace veltrane::host
