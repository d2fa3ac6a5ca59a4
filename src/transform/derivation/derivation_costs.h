#ifndef VELTRANE_TRANSFORM_DERIVATION_COSTS_H
#define VELTRANE_TRANSFORM_DERIVATION_COSTS_H

#include <MCVeltrane_900/TransformVar.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace veltrane::transform {

/// How many evaluations a case takes in which fields are asked for that a lag stands below. These are evaluated each
/// time that another field asks for them, so a few dozen fields of which each asks twice for the one before would take
/// longer than anyone waits, and would move the history of the lag on that often.
///
/// Fields are added in the order of their list, each behind those that it refers to. An Apply asks for none: it reads
/// what its fields have given in their turn.
class DerivationCosts {
public:
    /// Evaluations of a case, of all its fields together: a few seconds.
    static constexpr std::uint64_t kMostOfACase = 100'000'000;

    /// Adds a field.
    /// @param source the variable that the field's name of a source stands for; null for none
    /// @return whether the field can be evaluated: none that it refers to takes more evaluations than
    ///         TransformVar::MAX_NESTED_EVALUATIONS, nor the case more than kMostOfACase
    bool Add(const MCVeltrane_900::TransformVar& var, const MCVeltrane_900::ScoreDictVar* source);

private:
    using Fields = std::vector<const MCVeltrane_900::ScoreDictVar*>;

    static Fields AskedFor(const MCVeltrane_900::TransformVar& var, const MCVeltrane_900::ScoreDictVar* source);
    std::uint64_t CostOf(const MCVeltrane_900::ScoreDictVar* field) const;

    std::unordered_map<const MCVeltrane_900::ScoreDictVar*, std::uint64_t> fCosts; ///< of the fields that have any
    std::uint64_t fTotal = 0;
};

} // namespace veltrane::transform

#endif
