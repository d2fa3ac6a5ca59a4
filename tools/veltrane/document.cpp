#include "document.h"

#include "failure.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

namespace veltrane::host {

Document::Document() = default;
Document::Document(Document&&) noexcept = default;
Document::~Document() = default;

Document ReadDocument(const std::string& path, const std::string& encoding) {
    Document document;
    MCVeltrane_900::ScoreDictionary* fields = nullptr;
    document.derivedFields.reset(
        MCVeltrane_900::ModelFactory::GetTransformationDictionaryFromXML(path, fields, encoding));
    document.fields.reset(fields);
    if (!document.fields)
        throw Failure(path + ": the document is no PMML: its root element is another one");
    return document;
}

void RequireDerivedFields(const Document& document, const std::string& path) {
    if (!document.derivedFields)
        throw Failure(path + ": the document has no derived fields");
}

} // namespace veltrane::host
