// Any bytes as a document of the older format: its dictionary ends in a catalogued failure or is read, learns its
// encoders, and can be copied and displayed.
#include "documents.h"
#include "run.h"

#include <veltrane.h>

#include <xercesc/util/XMLException.hpp>

#include <sstream>

using namespace MCVeltrane_900;
using namespace veltrane::fuzz;

namespace {

class Reader : public KORDTranslator {
public:
    using KORDTranslator::ParseFromTree;

    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        // A document may hold several, so that one that fails hides no other.
        const xercesc::DOMNodeList* elements = GetElementsByTagName(document, "dictionary");
        for (XMLSize_t i = 0; i < elements->getLength(); ++i) {
            MayFail([&] { Use(static_cast<xercesc::DOMElement*>(elements->item(i))); });
        }
        return nullptr;
    }

private:
    void Use(xercesc::DOMElement* element) {
        std::unique_ptr<ScoreDictionary> dictionary;
        try {
            dictionary.reset(ParseDictionary(element));
        } catch (const xercesc::XMLException&) {
            return; // a format without its numbers, which fails by the XML library's
                    // own exception
        }
        for (ScoreDictVar* variable : dictionary->GetScoreDictVars()) {
            SetupCatEncoder(variable);
        }
        const std::unique_ptr<ScoreDictionary> copy(dictionary->Clone());
        std::ostringstream text;
        dictionary->Display(text);
        copy->Display(text);
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    const Input input = InputOf(data, size);
    WithTree(input.document, [&](xercesc::DOMDocument& document) {
        MayFail([&] { Reader().ParseFromTree(&document, input.encoding); });
    });
    return 0;
}
