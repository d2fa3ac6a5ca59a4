#ifndef MCVELTRANE_900_BASETRANSLATOR_H
#define MCVELTRANE_900_BASETRANSLATOR_H

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreTranslator.h>
#include <veltrane_export.h>

#include <xercesc/util/XercesDefs.hpp>

#include <memory>
#include <string>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
class DOMNode;
class DOMNodeList;
XERCES_CPP_NAMESPACE_END

namespace MCVeltrane_900 {

class ScoreDictionary;
class ScoreModel;
class ScoreValue;
class SmartTranscoder;

/// What every translator stands on: the transcoder of the document's text, walks over the DOM, and the checks that a
/// text is a number, an integer or a date. All failures are VTException.
///
/// Elements, nodes, lists and attribute texts belong to the DOM document and live as long as it does.
class VELTRANE_API BaseTranslator : public ScoreTranslator {
public:
    /// The encoding that strings get where none is named.
    static constexpr const char* DEFAULT_ENCODING = "CP1252";

    BaseTranslator();

    /// Shares the other's transcoder, it makes none of its own.
    BaseTranslator(const BaseTranslator& other);
    BaseTranslator& operator=(const BaseTranslator& other);
    ~BaseTranslator() override;

    /// Routes that a derived translator does not serve return null.
    ScoreModel* ParseFromTree(xercesc::DOMElement* element, ScoreModel* baseModel,
                              const std::string& encoding) override;
    ScoreModel* ParseFromTree(xercesc::DOMElement* element, ScoreDictionary* dictionary, ScoreDictionary* derived,
                              const std::string& encoding) override;
    ScoreModel* ParseFromTree(const std::string& file, const std::string& encoding) override;
    ScoreModel* ParseFromTree(std::istream& stream, const std::string& encoding) override;
    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override = 0;
    virtual ScoreModel* ParseFromTree(xercesc::DOMDocument* document, ScoreDictionary* dictionary,
                                      const std::string& encoding);
    virtual ScoreModel* ParseFromTree(std::istream& stream, const std::string& encoding, const std::string& auxPath);

    /// Makes the transcoder of the document's text.
    /// @param encoding name of the encoding that strings shall have; empty means DEFAULT_ENCODING. An unknown name
    ///                 gives a transcoder that delivers empty texts.
    void CreateTranscoder(const std::string& encoding);

    /// Removes the leading blanks, and the trailing ones but for as many as there were leading ones: "  ab" and "ab  "
    /// give "ab", " ab " and " ab   " give "ab ". A text of nothing but blanks stays as it is. Only the blank counts,
    /// no tab and no line end. VerifyDouble rests on exactly this: a number may have blanks on one side, not on both.
    static std::string TrimBlanks(const std::string& text);

    /// Compares a document's text with a literal. With a transcoder the text is transcoded and compared as bytes;
    /// without one the literal is brought to UTF-16. A null text equals the empty literal.
    static bool IsEqual(SmartTranscoder* transcoder, const XMLCh* text, const std::string& literal);
    static bool IsEqual(const XMLCh* text, const std::string& literal);

    /// The first child, or the next sibling, that is an element; null for none and for a null node.
    static xercesc::DOMNode* GetFirstChildElt(xercesc::DOMNode* node);
    static xercesc::DOMNode* GetNextSiblingElt(xercesc::DOMNode* node);

    /// @return the attribute's text, empty when the attribute is absent
    static const XMLCh* GetAttribute(const xercesc::DOMElement* element, const std::string& name);

    /// @return the attribute's text, which may be empty
    /// @throws VTException 260120 when the attribute is absent
    static const XMLCh* GetAttributeForced(const xercesc::DOMElement* element, const std::string& name);

    /// The first direct child element with this node name; null for none and for a null node.
    static xercesc::DOMNode* GetChildByTag(xercesc::DOMNode* node, const std::string& tag);

    /// The same, and releases the tag with XMLString::release: it takes ownership of the buffer.
    static xercesc::DOMNode* GetChildTag(xercesc::DOMNode* node, XMLCh* tag);

    /// @throws VTException 260114 with the tag when there is no such child
    static xercesc::DOMNode* GetChildByTagForced(xercesc::DOMNode* node, const std::string& tag);

    /// As GetChildTag, the buffer's owner also when it throws.
    /// @throws VTException 260114 with the tag when there is no such child
    static xercesc::DOMNode* GetChildTagForced(xercesc::DOMNode* node, XMLCh* tag);

    /// The document's, or the element's, descendants with this tag in document order, as a live list of the DOM.
    /// @throws VTException 260114 with the tag for a null document or element
    static xercesc::DOMNodeList* GetElementsByTagName(const xercesc::DOMDocument* document, const std::string& tag);
    static xercesc::DOMNodeList* GetElementsByTagName(const xercesc::DOMElement* element, const std::string& tag);

    /// Reads digits with at most one sign in front; nothing is trimmed. A number that does not fit is read as atoi
    /// reads it.
    /// @throws VTException 260151 with the text and "integer"
    static int VerifyInt(const std::string& text);
    static int VerifyInt(const XMLCh* text);

    /// Reads a decimal number after TrimBlanks, the same under every locale. Too large a number gives infinity, too
    /// large a negative one the missing number, and too small a one what lies nearest to it. Not the whole grammar is
    /// checked, only the characters and the places of signs, point and exponent letter: "1-2e-5" passes and reads as 1,
    /// "-e5" as the missing number.
    /// @throws VTException 260151 with the text as TrimBlanks leaves it, and "double"
    static double VerifyDouble(const std::string& text);
    static double VerifyDouble(const XMLCh* text);

    /// Reads a date, a time or both, or a count since an epoch.
    /// @return the number of a DateTimeValue of that type: days since 1970 for dates, else seconds
    /// @throws VTException 260151 with the text and "dateTime"
    static double VerifyDateTime(const std::string& text, ScoreDictVar::DateTimeType type);
    static double VerifyDateTime(const XMLCh* text, ScoreDictVar::DateTimeType type);

    /// A new value of the variable's type, owned by the caller: a date-time variable takes its number as text. Null for
    /// a variable that is neither numeric, string nor date-time.
    /// @throws VTException 260151 from VerifyDouble
    ScoreValue* CarefullyMakeVarValue(const ScoreDictVar* var, const std::string& text);
    ScoreValue* CarefullyMakeVarValue(const ScoreDictVar* var, const XMLCh* text);

protected:
    /// A document's text in the translator's encoding, in that of the process without a transcoder; empty for null.
    std::string ToString(const XMLCh* text);

    /// Null until CreateTranscoder has run.
    SmartTranscoder* GetTranscoder() const;

private:
    SmartTranscoder* fTranscoder;
    std::shared_ptr<SmartTranscoder> fTranscoderOwner;
};

} // namespace MCVeltrane_900

#endif
