#ifndef VELTRANE_TRANSLATORS_DATA_FIELD_READER_H
#define VELTRANE_TRANSLATORS_DATA_FIELD_READER_H

#include "translators/frame/document_text.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/PMMLTranslator.h>

#include <memory>

namespace MCVeltrane_900 {
class ScoreDictionary;
} // namespace MCVeltrane_900

namespace veltrane::translators {

/// Makes a variable of one DataField element. The order of the checks is the order in which a document's faults are
/// reported.
class DataFieldReader {
public:
    /// Borrows both.
    DataFieldReader(MCVeltrane_900::PMMLTranslator& translator, const DocumentText& text)
        : fTranslator(translator), fText(text) {}

    /// @param dictionary the fields so far, for the test of names
    /// @throws VTException for the first fault
    std::unique_ptr<MCVeltrane_900::DictVar> Read(xercesc::DOMElement* field,
                                                  const MCVeltrane_900::ScoreDictionary& dictionary, bool withEncoder);

private:
    /// What the attributes and extensions say of a field before its type is decided.
    struct Storage {
        const XMLCh* type;
        bool isFromExtension = false;
        bool noSpaceTrim = false;
        bool emptyStringOk = true;
    };

    std::unique_ptr<MCVeltrane_900::DictVar> MakeVar(const xercesc::DOMElement* field,
                                                     const MCVeltrane_900::ScoreDictionary& dictionary) const;
    void SetLevel(const xercesc::DOMElement* field, MCVeltrane_900::DictVar& var) const;
    Storage ReadExtensions(xercesc::DOMElement* field, MCVeltrane_900::DictVar& var);
    void ReadExtension(const xercesc::DOMElement* extension, Storage& storage, MCVeltrane_900::DictVar& var) const;
    void SetMeasure(const XMLCh* measure, MCVeltrane_900::DictVar& var) const;
    bool SetType(const xercesc::DOMElement* field, const Storage& storage, MCVeltrane_900::DictVar& var);

    MCVeltrane_900::PMMLTranslator& fTranslator;
    const DocumentText& fText;
};

} // namespace veltrane::translators

#endif
