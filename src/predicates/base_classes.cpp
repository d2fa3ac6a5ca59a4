#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScorePredicate.h>
#include <MCVeltrane_900/ScoreSplitVar.h>

namespace MCVeltrane_900 {

// It stands here so that the library alone holds the virtual table and type information, which plug-ins share.
ScorePredicate::~ScorePredicate() = default;

ScoreSplitVar::ScoreSplitVar() = default;
ScoreSplitVar::ScoreSplitVar(const ScoreDictVar* var) : fSplitVar(var) {}
ScoreSplitVar::ScoreSplitVar(const ScoreSplitVar& other) = default;
ScoreSplitVar& ScoreSplitVar::operator=(const ScoreSplitVar& other) = default;
ScoreSplitVar::~ScoreSplitVar() = default;

void ScoreSplitVar::SetSplitVar(const ScoreDictVar* var) {
    fSplitVar = var;
}
void ScoreSplitVar::SetMissvalMap(int index) {
    fMissvalMap = index;
}
const ScoreDictVar* ScoreSplitVar::GetSplitVar() const {
    return fSplitVar;
}
const std::string& ScoreSplitVar::GetSplitName() const {
    return fSplitVar->GetName();
}
const std::string& ScoreSplitVar::GetSplitLabel() const {
    return fSplitVar->GetLabel();
}
int ScoreSplitVar::GetSplitType() const {
    return fSplitVar->GetVarType();
}
int ScoreSplitVar::GetSplitMLevel() const {
    return fSplitVar->GetMLevel();
}
int ScoreSplitVar::GetMissvalMap() const {
    return fMissvalMap;
}

} // namespace MCVeltrane_900
