#ifndef MCVELTRANE_900_SCORE_TRANSLATOR_H
#define MCVELTRANE_900_SCORE_TRANSLATOR_H

#include <veltrane_export.h>

#include <xercesc/util/XercesDefs.hpp>

#include <iosfwd>
#include <string>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace MCVeltrane_900 {

class ScoreDictionary;
class ScoreModel;

/// Builds a model from a model document. A plug-in's exported GiveMyTranslator returns one; its class must derive from
/// BaseTranslator, since the factory calls operations that BaseTranslator adds.
///
/// The factory calls exactly one operation of a translator, once, and then deletes it. Each operation returns a new
/// model, which the host owns and which holds nothing of the document, or null, which goes to the host as it is. It
/// reports failure by throwing a VTException.
class VELTRANE_API ScoreTranslator {
public:
    virtual ~ScoreTranslator();

    /// Builds a model from one element, on top of a base model. Both are borrowed.
    virtual ScoreModel* ParseFromTree(xercesc::DOMElement* element, ScoreModel* base, const std::string& text) = 0;

    /// Builds a model from one element, with two dictionaries whose owner plug-in and host agree on.
    virtual ScoreModel* ParseFromTree(xercesc::DOMElement* element, ScoreDictionary* first, ScoreDictionary* second,
                                      const std::string& text) = 0;

    /// Not called by the factory.
    virtual ScoreModel* ParseFromTree(const std::string& first, const std::string& second) = 0;

    /// Not called by the factory.
    virtual ScoreModel* ParseFromTree(std::istream& in, const std::string& text) = 0;

    /// Builds a model from a whole document, which is borrowed for the call.
    /// @param encoding the code page of the model's text; empty for the default
    virtual ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) = 0;
};

} // namespace MCVeltrane_900

#endif
