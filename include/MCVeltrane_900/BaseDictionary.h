#ifndef MCVELTRANE_900_BASEDICTIONARY_H
#define MCVELTRANE_900_BASEDICTIONARY_H

#include <MCVeltrane_900/ScoreDictionary.h>

#include <functional>
#include <map>

namespace MCVeltrane_900 {

/// The dictionary of a model: variables by name, ordered by the bytes of the name. See ScoreDictionary.
class VELTRANE_API BaseDictionary : public ScoreDictionary {
public:
    BaseDictionary();
    /// Clones every variable and copies the list of names.
    BaseDictionary(const BaseDictionary& other);
    /// Replaces the variables by clones of the other's, but keeps this dictionary's own list of names.
    BaseDictionary& operator=(const BaseDictionary& other);
    ~BaseDictionary() override;

    ScoreDictionary* Clone() override;
    bool AddVar(const ScoreDictionary* other) override;
    bool AddVar(const std::string& name, ScoreDictVar* var) override;
    bool RemoveVar(const std::string& name) override;
    ScoreDictVar* GetVar(const std::string& name) override;
    const ScoreDictVar* GetVar(const std::string& name) const override;
    int Size() const override;
    std::vector<ScoreDictVar*> GetScoreDictVars() const override;
    std::vector<std::string> GetVarNames() const override;
    void Display(std::ostream& out) const override;

    /// A number that changes with every change of the set of variables, and that no other dictionary of the process
    /// ever has or had. What GetVar() gave at one revision, null included, holds for as long as the revision stays.
    unsigned long long GetRevision() const { return fRevision; }

private:
    std::map<std::string, ScoreDictVar*, std::less<>> fVars;
    std::vector<std::string> fVarNames;
    unsigned long long fRevision = 0;
};

} // namespace MCVeltrane_900

#endif
