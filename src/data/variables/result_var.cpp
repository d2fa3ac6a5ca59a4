#include <MCVeltrane_900/ResultVar.h>

namespace MCVeltrane_900 {

ResultVar::ResultVar(const std::string& name, VariableType type) : DictVar(name, type) {}
ResultVar::ResultVar(const ResultVar& other) = default;
ResultVar& ResultVar::operator=(const ResultVar& other) = default;
ResultVar::~ResultVar() = default;

ScoreDictVar* ResultVar::Clone() const {
    return new ResultVar(*this);
}

} // namespace MCVeltrane_900
