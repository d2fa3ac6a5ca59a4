#include <MCVeltrane_900/DOMElemUtility.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/SmartTranscoder.h>
#include <MCVeltrane_900/VTException.h>

#include <xercesc/dom/DOM.hpp>

#include <limits>

namespace MCVeltrane_900 {
namespace {

/// Runs a read that may fail; without `throwing` a failure becomes the default.
template <typename Result, typename Read>
Result OrDefault(Result fallback, bool throwing, Read read) {
    try {
        return read();
    } catch (const VTException&) {
        if (throwing) {
            throw;
        }
        return fallback;
    }
}

} // namespace

DOMElemUtility::DOMElemUtility(PMMLTranslator* translator, SmartTranscoder* transcoder)
    : fTranslator(translator), fTranscoder(transcoder) {}

DOMElemUtility::~DOMElemUtility() = default;

xercesc::DOMNodeList* DOMElemUtility::GetDOMNodeList(xercesc::DOMElement* element, const std::string& tag, bool) {
    if (!element || tag.empty()) {
        return nullptr;
    }
    xercesc::DOMNodeList* list = BaseTranslator::GetElementsByTagName(element, tag);
    return list->item(0) ? list : nullptr;
}

// The list remembers the element that it gave last and goes on from there. Asking whether it is empty would bring it
// back to its beginning at each call.
xercesc::DOMElement* DOMElemUtility::GetElemFromNodeList(xercesc::DOMElement* element, const std::string& tag,
                                                         unsigned long long index, bool) {
    // The highest index is none for the list, which counts from 1 inside.
    if (!fTranslator || !element || tag.empty() || index >= std::numeric_limits<XMLSize_t>::max()) {
        return nullptr;
    }
    return static_cast<xercesc::DOMElement*>(BaseTranslator::GetElementsByTagName(element, tag)->item(index));
}

unsigned long long DOMElemUtility::GetNodeListLength(xercesc::DOMElement* element, const std::string& tag,
                                                     bool throwing) {
    if (!fTranslator) {
        return 0;
    }
    const xercesc::DOMNodeList* list = GetDOMNodeList(element, tag, throwing);
    return list ? list->getLength() : 0;
}

double DOMElemUtility::GetAttributeToDouble(xercesc::DOMElement* element, const std::string& name, bool throwing) {
    if (!fTranslator || !element || name.empty()) {
        return -1.0;
    }
    return OrDefault(-1.0, throwing,
                     [&] { return BaseTranslator::VerifyDouble(BaseTranslator::GetAttributeForced(element, name)); });
}

int DOMElemUtility::GetAttributeToInt(xercesc::DOMElement* element, const std::string& name, bool throwing) {
    if (!fTranslator || !element || name.empty()) {
        return -1;
    }
    return OrDefault(-1, throwing,
                     [&] { return BaseTranslator::VerifyInt(BaseTranslator::GetAttributeForced(element, name)); });
}

std::string DOMElemUtility::GetAttributeToString(xercesc::DOMElement* element, const std::string& name, bool throwing) {
    if (!fTranslator || !fTranscoder || !element || name.empty()) {
        return {};
    }
    return OrDefault(std::string(), throwing,
                     [&] { return fTranscoder->transcodeTo(BaseTranslator::GetAttributeForced(element, name)); });
}

xercesc::DOMElement* DOMElemUtility::GetChildElemByName(xercesc::DOMElement* element, const std::string& tag,
                                                        bool throwing) {
    if (!fTranslator || !element || tag.empty()) {
        return nullptr;
    }
    return OrDefault<xercesc::DOMElement*>(nullptr, throwing, [&] {
        return static_cast<xercesc::DOMElement*>(BaseTranslator::GetChildByTagForced(element, tag));
    });
}

} // namespace MCVeltrane_900
