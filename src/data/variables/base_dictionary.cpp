#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/ScoreDictVar.h>

#include <atomic>
#include <string_view>

namespace MCVeltrane_900 {

namespace {

using Vars = std::map<std::string, ScoreDictVar*, std::less<>>;

/// A number for the variables as they are from now on. All come from one source, so that a dictionary that is built
/// where another one stood is told apart from it.
unsigned long long NextRevision() {
    static std::atomic<unsigned long long> last{0};
    return ++last;
}

void DeleteVars(Vars& vars) {
    for (const auto& [name, var] : vars) {
        delete var;
    }
    vars.clear();
}

void CloneVars(Vars& vars, const Vars& others) {
    for (const auto& [name, var] : others) {
        vars.emplace_hint(vars.end(), name, var->Clone());
    }
}

} // namespace

BaseDictionary::BaseDictionary() {
    fRevision = NextRevision();
}

BaseDictionary::BaseDictionary(const BaseDictionary& other) : ScoreDictionary(other), fVarNames(other.fVarNames) {
    CloneVars(fVars, other.fVars);
    fRevision = NextRevision();
}

// The names stay as they were: they record what was added to this dictionary.
BaseDictionary& BaseDictionary::operator=(const BaseDictionary& other) {
    if (this != &other) {
        DeleteVars(fVars);
        CloneVars(fVars, other.fVars);
        fRevision = NextRevision();
    }
    return *this;
}

BaseDictionary::~BaseDictionary() {
    DeleteVars(fVars);
}

ScoreDictionary* BaseDictionary::Clone() {
    return new BaseDictionary(*this);
}

bool BaseDictionary::AddVar(const ScoreDictionary* other) {
    if (!other) {
        return false;
    }
    std::vector<std::string> names = other->GetVarNames();
    for (const std::string& name : names) {
        const ScoreDictVar* var = other->GetVar(name);
        if (var && fVars.find(name) == fVars.end()) {
            fVars.emplace(name, var->Clone());
            fRevision = NextRevision();
        }
    }
    fVarNames.swap(names);
    return false;
}

bool BaseDictionary::AddVar(const std::string& name, ScoreDictVar* var) {
    if (name.empty() || !var) {
        return false;
    }
    if (fVars.emplace(name, var).second) {
        fRevision = NextRevision();
    }
    fVarNames.push_back(name);
    return true;
}

bool BaseDictionary::RemoveVar(const std::string& name) {
    const auto found = fVars.find(name);
    if (name.empty() || found == fVars.end()) {
        return false;
    }
    delete found->second;
    fVars.erase(found);
    fRevision = NextRevision();
    return true;
}

ScoreDictVar* BaseDictionary::GetVar(const std::string& name) {
    const auto found = fVars.find(std::string_view(name.c_str()));
    return found == fVars.end() ? nullptr : found->second;
}

// The lookup that a derived dictionary replaces is the other one; it changes nothing.
const ScoreDictVar* BaseDictionary::GetVar(const std::string& name) const {
    ScoreDictionary* self = const_cast<BaseDictionary*>(this);
    return self->GetVar(name);
}

int BaseDictionary::Size() const {
    return static_cast<int>(fVars.size());
}

std::vector<ScoreDictVar*> BaseDictionary::GetScoreDictVars() const {
    std::vector<ScoreDictVar*> vars;
    vars.reserve(fVars.size());
    for (const auto& [name, var] : fVars) {
        vars.push_back(var);
    }
    return vars;
}

std::vector<std::string> BaseDictionary::GetVarNames() const {
    return fVarNames;
}

void BaseDictionary::Display(std::ostream& out) const {
    out << "\n ############ Begin dictionary display ################ \n";
    for (const auto& [name, var] : fVars) {
        var->Display(out);
    }
    out << "End Of ScoreDictionary display.\n\n";
}

} // namespace MCVeltrane_900
