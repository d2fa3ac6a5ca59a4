#include "document.h"

#include "failure.h"
#include "kord_document.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

namespace veltrane::host {

namespace {

/// Receives an object through a pointer argument. It is owned even where the call that made it throws in the end.
template <typename T>
struct OutPointer {
    explicit OutPointer(std::unique_ptr<T>& owner) : owner(owner) {}
    ~OutPointer() { HandOver(); }
    OutPointer(const OutPointer&) = delete;
    OutPointer& operator=(const OutPointer&) = delete;

    void HandOver() {
        if (pointer)
            owner.reset(pointer);
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
Document ReadPmml(const std::string& path, const std::string& encoding) {
    Document document;
    OutPointer<MCVeltrane_900::ScoreDictionary> fields(document.fields);
    document.derivedFields.reset(
        MCVeltrane_900::ModelFactory::GetTransformationDictionaryFromXML(path, fields.pointer, encoding));
    fields.HandOver();
    document.isPmml = document.fields != nullptr;
    return document;
}

} // namespace

Document ReadDocument(const std::string& path, const std::string& encoding) {
    Document document = ReadPmml(path, encoding);
    if (!document.fields)
        throw Failure(path + ": the document is no PMML: its root element is another one");
    return document;
}

Document ReadAnyDocument(const std::string& path, const std::string& encoding) {
    Document document = ReadPmml(path, encoding);
    if (!document.fields)
        document.fields = ReadKordDictionary(path, encoding);
    if (!document.fields)
        throw Failure(path + ": the document is neither PMML nor kord-ml: its root element is another one");
    return document;
}

void RequireDerivedFields(const Document& document, const std::string& path) {
    if (!document.derivedFields)
        throw Failure(path + ": the document has no derived fields");
}

} // namespace veltrane::host
