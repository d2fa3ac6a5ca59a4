#include <MCVeltrane_900/BaseTranslator.h>

namespace MCVeltrane_900 {

BaseTranslator::BaseTranslator() : fTranscoder(nullptr) {}

BaseTranslator::BaseTranslator(const BaseTranslator& other) = default;
BaseTranslator& BaseTranslator::operator=(const BaseTranslator& other) = default;
BaseTranslator::~BaseTranslator() = default;

ScoreModel* BaseTranslator::ParseFromTree(xercesc::DOMElement*, ScoreModel*, const std::string&) {
    return nullptr;
}

ScoreModel* BaseTranslator::ParseFromTree(xercesc::DOMElement*, ScoreDictionary*, ScoreDictionary*,
                                          const std::string&) {
    return nullptr;
}

ScoreModel* BaseTranslator::ParseFromTree(const std::string&, const std::string&) {
    return nullptr;
}

ScoreModel* BaseTranslator::ParseFromTree(std::istream&, const std::string&) {
    return nullptr;
}

ScoreModel* BaseTranslator::ParseFromTree(xercesc::DOMDocument*, ScoreDictionary*, const std::string&) {
    return nullptr;
}

ScoreModel* BaseTranslator::ParseFromTree(std::istream&, const std::string&, const std::string&) {
    return nullptr;
}

SmartTranscoder* BaseTranslator::GetTranscoder() const {
    return fTranscoder;
}

} // namespace MCVeltrane_900
