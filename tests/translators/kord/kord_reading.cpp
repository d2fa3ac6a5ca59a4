#include "translators/kord/kord_reading.h"

#include "support/dom.h"
#include "support/faults/failure.h"

namespace veltrane::tests {

namespace {

std::string Variable(const std::string& storage, const std::string& level, const std::string& children) {
    return "<variable name='v' storage-type='" + storage + "' measurement-level='" + level + "'>" + children +
           "</variable>";
}

} // namespace

KordReading::KordReading() {
    StartXml();
    kord.CreateTranscoder("UTF-8");
}

KordReading::Dictionary KordReading::ReadKordElement(const std::string& element) {
    const ParsedXml document = ParseXml(element);
    return Dictionary(kord.ParseDictionary(document.Root()));
}

KordReading::Dictionary KordReading::ReadVariables(const std::string& variables) {
    return ReadKordElement("<dictionary>" + variables + "</dictionary>");
}

MCVeltrane_900::ScoreDictVar* KordReading::ReadVariable(const std::string& variable) {
    fKordRead.push_back(ReadVariables(variable));
    return fKordRead.back()->GetScoreDictVars().at(0);
}

void KordReading::ExpectKordFault(const std::string& variables, const Failure& failure, const char* file, int line) {
    ExpectFailure([&] { ReadVariables(variables); }, failure, file, line);
}

std::string TextVariable(const std::string& children, const std::string& level) {
    return Variable("STRING", level, children);
}

std::string NumberVariable(const std::string& children, const std::string& level) {
    return Variable("NUMERIC", level, children);
}

} // namespace veltrane::tests
