#ifndef MCVELTRANE_900_SCOREDICTIONARY_H
#define MCVELTRANE_900_SCOREDICTIONARY_H

#include <veltrane_export.h>

#include <ostream>
#include <string>
#include <vector>

namespace MCVeltrane_900 {

class ScoreDictVar;

/// A collection of variables, found by name, which it owns.
class VELTRANE_API ScoreDictionary {
public:
    virtual ~ScoreDictionary();

    /// A deep copy, owned by the caller.
    virtual ScoreDictionary* Clone() = 0;

    /// Adds clones of all variables of another dictionary and takes over its list of names.
    /// @return false, whether or not variables were added; no caller may read it as a failure
    virtual bool AddVar(const ScoreDictionary* other) = 0;

    /// Adds a variable under a name. The first variable of a name stays: a later one is neither stored nor deleted.
    /// @param var becomes the dictionary's, unless the name is known already
    /// @return false for an empty name or a null variable, true otherwise, also for a known name
    virtual bool AddVar(const std::string& name, ScoreDictVar* var) = 0;

    /// Deletes a variable; its name stays in GetVarNames().
    /// @return false for an empty or unknown name
    virtual bool RemoveVar(const std::string& name) = 0;

    /// The variable of a name, or null; it stays the dictionary's. The name counts up to its first NUL.
    virtual ScoreDictVar* GetVar(const std::string& name) = 0;
    virtual const ScoreDictVar* GetVar(const std::string& name) const = 0;

    /// The number of variables.
    virtual int Size() const = 0;

    /// The variables sorted by name; they stay the dictionary's.
    virtual std::vector<ScoreDictVar*> GetScoreDictVars() const = 0;

    /// The names in the order of addition. This is a record of its own: names of removed variables stay in it, and a
    /// name that was added twice stands in it twice.
    virtual std::vector<std::string> GetVarNames() const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
