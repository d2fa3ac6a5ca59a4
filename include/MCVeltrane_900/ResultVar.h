#ifndef MCVELTRANE_900_RESULTVAR_H
#define MCVELTRANE_900_RESULTVAR_H

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/ScoreResultField.h>

namespace MCVeltrane_900 {

/// The variable of an output field: what it gives and under which name.
class VELTRANE_API ResultVar : public DictVar {
public:
    ResultVar(const std::string& name, VariableType type);
    ResultVar(const ResultVar& other);
    ResultVar& operator=(const ResultVar& other);
    ~ResultVar() override;

    /// A new ResultVar, owned by the caller.
    ScoreDictVar* Clone() const override;

    void SetFeature(ScoreResultField::ResultFeature feature) { fFeature = feature; }
    ScoreResultField::ResultFeature GetFeature() const { return fFeature; }

private:
    ScoreResultField::ResultFeature fFeature = ScoreResultField::RF_NONE;
};

} // namespace MCVeltrane_900

#endif
