#include <MCVeltrane_900/PMMLTranslator.h>

namespace MCVeltrane_900 {

PMMLTranslator::PMMLTranslator() : PMMLTranslator(std::string()) {}

PMMLTranslator::PMMLTranslator(const std::string& encoding)
    : fWord(0), fEncoding(encoding), fConstant(4.0), fNodeCounter(0) {}

PMMLTranslator::PMMLTranslator(const PMMLTranslator& other) = default;
PMMLTranslator& PMMLTranslator::operator=(const PMMLTranslator& other) = default;
PMMLTranslator::~PMMLTranslator() = default;

ScoreModel* PMMLTranslator::ParseFromTree(xercesc::DOMDocument*, const std::string&) {
    return nullptr;
}

} // namespace MCVeltrane_900
