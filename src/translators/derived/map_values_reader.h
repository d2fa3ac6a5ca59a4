#ifndef VELTRANE_TRANSLATORS_MAP_VALUES_READER_H
#define VELTRANE_TRANSLATORS_MAP_VALUES_READER_H

#include "translators/frame/document_text.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/PMMLTranslator.h>

#include <string>

namespace MCVeltrane_900 {
class InlineTable;
class MapValues;
} // namespace MCVeltrane_900

namespace veltrane::translators {

/// Reads the children of a MapValues into the value map of a derived field. All arguments are borrowed.
class MapValuesReader {
public:
    /// @param map the field's value map
    MapValuesReader(MCVeltrane_900::PMMLTranslator& translator, const DocumentText& text, const FieldLookup& fields,
                    MCVeltrane_900::TransformVar& var, MCVeltrane_900::MapValues& map)
        : fTranslator(translator), fText(text), fFields(fields), fVar(var), fMap(map) {}

    /// @return the field of the last FieldColumnPair; empty when there is none
    std::string Read(xercesc::DOMElement* mapValues);

private:
    void ReadChild(xercesc::DOMElement* child);
    void ReadPair(xercesc::DOMElement* pair);
    void ReadExtension(xercesc::DOMElement* extension);
    void ReadTable(xercesc::DOMElement* element);
    void ReadTableExtensions(xercesc::DOMElement* first);
    void RecodeTargetToSysmis(xercesc::DOMElement* extension);
    MCVeltrane_900::InlineTable& InstallTable();

    MCVeltrane_900::PMMLTranslator& fTranslator;
    DocumentText fText;
    FieldLookup fFields;
    MCVeltrane_900::TransformVar& fVar;
    MCVeltrane_900::MapValues& fMap;
    const MCVeltrane_900::ScoreDictVar* fSource = nullptr;
    std::string fSourceName;
};

} // namespace veltrane::translators

#endif
