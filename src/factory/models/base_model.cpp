#include <MCVeltrane_900/BaseModel.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreVersionInfo.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <utility>

namespace MCVeltrane_900 {

namespace {

constexpr std::pair<const char*, BaseModel::FUNCNAME_TYPE> kMiningFunctions[] = {
    {"associationRules", BaseModel::FUNC_ASSOCIATION_RULES},
    {"sequences", BaseModel::FUNC_SEQUENCES},
    {"classification", BaseModel::FUNC_CLASSIFICATION},
    {"regression", BaseModel::FUNC_REGRESSION},
    {"clustering", BaseModel::FUNC_CLUSTERING},
    {"timeSeries", BaseModel::FUNC_TIME_SERIES},
};

} // namespace

BaseModel::BaseModel() = default;

BaseModel::~BaseModel() {
    delete fVersionInfo;
    fRoles.clear();
    if (fOwnsDictionary) {
        delete fDictionary;
    }
    delete fTransformationDictionary;
    delete fResultDictionary;
}

void BaseModel::SetScoreDictionary(ScoreDictionary* dictionary) {
    fDictionary = dictionary;
}

void BaseModel::SetScoreDictionary(ScoreDictionary* dictionary, bool owns) {
    fDictionary = dictionary;
    fOwnsDictionary = owns;
}

void BaseModel::SetTransformationScoreDictionary(TransformationDictionary* dictionary) {
    fTransformationDictionary = dictionary;
}

void BaseModel::SetResultScoreDictionary(ScoreDictionary* dictionary) {
    fResultDictionary = dictionary;
}

bool BaseModel::SetVarRole(const std::string& name, VarRole role) {
    if (name.empty()) {
        return false;
    }
    const bool known = fDictionary != nullptr && std::as_const(*fDictionary).GetVar(name) != nullptr;
    if (!known && fTransformationDictionary != nullptr &&
        std::as_const(*fTransformationDictionary).GetVar(name) == nullptr) {
        return false;
    }
    if (role == ROLE_TARGET) {
        fTargetName = name;
    }
    fRoles[name] = role;
    return true;
}

bool BaseModel::SetVarRole(const ScoreDictVar* var, VarRole role) {
    return var != nullptr && SetVarRole(var->GetName(), role);
}

void BaseModel::SetMissingValuePolicy(MVPolicy policy) {
    fMissingValuePolicy = policy;
}

void BaseModel::SetVersionInfo(ScoreVersionInfo* info) {
    fVersionInfo = info;
}

int BaseModel::GetVarRole(const std::string& name) const {
    const auto found = fRoles.find(name);
    return name.empty() || found == fRoles.end() ? -1 : found->second;
}

int BaseModel::GetVarRole(const ScoreDictVar* var) const {
    return var == nullptr ? -1 : GetVarRole(var->GetName());
}

const ScoreVersionInfo* BaseModel::GetVersionInfo() const {
    return fVersionInfo;
}

const ScoreDictVar* BaseModel::GetTargetVar() const {
    return fDictionary == nullptr ? nullptr : std::as_const(*fDictionary).GetVar(fTargetName);
}

const ScoreDictionary* BaseModel::GetDictionary() const {
    return fDictionary;
}

TransformationDictionary* BaseModel::GetTransformationDictionary() const {
    return fTransformationDictionary;
}

ScoreDictionary* BaseModel::GetResultDictionary() const {
    return fResultDictionary;
}

ScoreModel::MVPolicy BaseModel::GetMissingValuePolicy() const {
    return fMissingValuePolicy;
}

BaseModel::FUNCNAME_TYPE BaseModel::MiningFunctionFromString(const std::string& name) {
    for (const auto& [text, function] : kMiningFunctions) {
        if (name == text) {
            return function;
        }
    }
    return FUNC_NONE;
}

void BaseModel::SetMiningFunction(FUNCNAME_TYPE function) {
    fMiningFunction = function;
}

BaseModel::FUNCNAME_TYPE BaseModel::GetMiningFunction() const {
    return fMiningFunction;
}

void BaseModel::SetAlgorithmName(const std::string& name) {
    fAlgorithmName = name;
}

std::string BaseModel::GetAlgorithmName() const {
    return fAlgorithmName;
}

bool BaseModel::isKMorPDF() const {
    return fAlgorithmName == "KM" || fAlgorithmName == "Parametric Distribution Fitting";
}

bool BaseModel::NeedToMakeupATarget() const {
    return fMiningFunction == FUNC_REGRESSION && GetTargetVar() == nullptr;
}

} // namespace MCVeltrane_900
