#ifndef MCVELTRANE_900_DOMELEMUTILITY_H
#define MCVELTRANE_900_DOMELEMUTILITY_H

#include <veltrane_export.h>

#include <xercesc/util/XercesDefs.hpp>

#include <string>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
class DOMNodeList;
XERCES_CPP_NAMESPACE_END

namespace MCVeltrane_900 {

class PMMLTranslator;
class SmartTranscoder;

/// Reading of elements with a default in place of a failure, for plug-ins. Every operation gives its default when an
/// input is missing: a null translator or element, an empty name. `throwing` says whether a VTException is passed on;
/// otherwise it gives the default too.
class VELTRANE_API DOMElemUtility {
public:
    /// Borrows both, which must outlive this object. Either may be null.
    DOMElemUtility(PMMLTranslator* translator, SmartTranscoder* transcoder);
    virtual ~DOMElemUtility();

    /// The descendants with this tag; null for a null element, an empty tag or an empty list. The DOM owns the list.
    xercesc::DOMNodeList* GetDOMNodeList(xercesc::DOMElement* element, const std::string& tag, bool throwing);

    /// The descendant at this position of the list; null behind its end. Going through the list in its order costs one
    /// walk over the element.
    xercesc::DOMElement* GetElemFromNodeList(xercesc::DOMElement* element, const std::string& tag,
                                             unsigned long long index, bool throwing);

    /// The number of descendants with this tag; 0 by default. Each call is a walk over the element, so a loop asks
    /// once.
    unsigned long long GetNodeListLength(xercesc::DOMElement* element, const std::string& tag, bool throwing);

    /// The attribute as a number; -1.0 by default.
    /// @throws VTException 260120 or 260151, when throwing
    double GetAttributeToDouble(xercesc::DOMElement* element, const std::string& name, bool throwing);

    /// The attribute as an integer; -1 by default.
    /// @throws VTException 260120 or 260151, when throwing
    int GetAttributeToInt(xercesc::DOMElement* element, const std::string& name, bool throwing);

    /// The attribute in the transcoder's encoding; empty by default, also without a transcoder.
    /// @throws VTException 260120, when throwing
    std::string GetAttributeToString(xercesc::DOMElement* element, const std::string& name, bool throwing);

    /// The first direct child element with this tag; null by default.
    /// @throws VTException 260114, when throwing
    xercesc::DOMElement* GetChildElemByName(xercesc::DOMElement* element, const std::string& tag, bool throwing);

private:
    PMMLTranslator* fTranslator;
    SmartTranscoder* fTranscoder;
};

} // namespace MCVeltrane_900

#endif
