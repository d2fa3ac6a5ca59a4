#ifndef MCVELTRANE_900_KORDTRANSLATOR_H
#define MCVELTRANE_900_KORDTRANSLATOR_H

#include <MCVeltrane_900/BaseTranslator.h>
#include <veltrane_export.h>

namespace MCVeltrane_900 {

class ScoreDictionary;
class ScoreDictVar;

/// The frame of translators for documents with the root "kord-ml": it reads their dictionary. A plug-in derives its
/// translator from this one, calls CreateTranscoder and ParseDictionary from its own ParseFromTree, and reads the rest
/// of the document itself. The names of the format are KORDModelTags.
class VELTRANE_API KORDTranslator : public BaseTranslator {
public:
    KORDTranslator();
    KORDTranslator(const KORDTranslator& other);
    KORDTranslator& operator=(const KORDTranslator& other);
    ~KORDTranslator() override;

    using BaseTranslator::ParseFromTree;
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override = 0;

    /// Reads a "dictionary" element. The transcoder has to be there: without CreateTranscoder the texts come in the
    /// code page of the process.
    /// @param dictionary the element
    /// @return a new dictionary of DictVars in document order, owned by the caller
    /// @throws VTException 260115, 260117, 260118, 260120, 260126, 260151, 260152, 260154, 260178, 260202, 260211,
    ///         260283, 260285, 260292: the first fault in document order; nothing is kept then and the translator stays
    ///         usable
    /// @throws xercesc::NumberFormatException for a "format-spec" whose "decimals" or "width" is absent or no integer;
    ///         it may outlive the XML platform
    ScoreDictionary* ParseDictionary(xercesc::DOMElement* dictionary);

    /// Gives an ordinal or nominal variable its encoder, if it has none, and teaches it the variable's categories.
    /// @return false for a null or a continuous variable
    bool SetupCatEncoder(ScoreDictVar* var);
};

} // namespace MCVeltrane_900

#endif
