#ifndef MCVELTRANE_900_SCORESPLITVAR_H
#define MCVELTRANE_900_SCORESPLITVAR_H

#include <veltrane_export.h>

#include <ostream>
#include <string>

namespace MCVeltrane_900 {

class ScoreDictVar;
class ScoreValue;

/// Maps the value of one variable to a child index: the number of the branch that the value falls into, or -1 for
/// none. Predicates use the one branch 0, so that any child means true; models may use several.
///
/// A split is built once and read afterwards: the constant operations keep no state and may run in several threads.
class VELTRANE_API ScoreSplitVar {
public:
    enum SplitVarType : int {
        SCALE_SPLIT = 0,    ///< ScaleSplit
        DISCRETE_SPLIT = 1, ///< DiscreteSplit
    };

    /// A split of no variable yet; SetSplitVar() has to come before any question.
    ScoreSplitVar();
    /// @param var stays the dictionary's, and has to outlive the split
    explicit ScoreSplitVar(const ScoreDictVar* var);
    ScoreSplitVar(const ScoreSplitVar& other);
    ScoreSplitVar& operator=(const ScoreSplitVar& other);
    virtual ~ScoreSplitVar();

    /// A new split with clones of the branches, owned by the caller. See the classes for what it leaves out.
    virtual ScoreSplitVar* Clone() const = 0;

    /// @param var stays the dictionary's, and has to outlive the split
    virtual void SetSplitVar(const ScoreDictVar* var);
    /// Sets the child index of missing values, -1 for none.
    virtual void SetMissvalMap(int index);

    /// The split variable, or null; it stays the dictionary's.
    virtual const ScoreDictVar* GetSplitVar() const;

    /// Name, label, type and measure level of the split variable, which must be set.
    virtual const std::string& GetSplitName() const;
    virtual const std::string& GetSplitLabel() const;
    virtual int GetSplitType() const;
    virtual SplitVarType GetSplitVarType() const = 0;
    virtual int GetSplitMLevel() const;

    /// The child index of missing values, -1 for none.
    virtual int GetMissvalMap() const;

    /// The child index of a number or code, -1 for none.
    virtual int GetSplitChildIndex(double value) const = 0;
    /// The child index of a value, -1 for none. Null is a missing value.
    virtual int GetSplitChildIndex(const ScoreValue* value) const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;

protected:
    const ScoreDictVar* fSplitVar = nullptr;
    int fMissvalMap = -1;
};

} // namespace MCVeltrane_900

#endif
