#ifndef VELTRANE_PLUGINS_FOREST_DECISION_H
#define VELTRANE_PLUGINS_FOREST_DECISION_H

#include "cut_ladder.h"
#include "feature.h"
#include "kit/conditions/condition.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace veltrane_forest {

/// What a condition says of each mark of its feature.
struct Decision {
    static constexpr int kConstant = -1;

    int feature = kConstant;                               ///< kConstant: `missing` is said of all cases
    std::vector<std::uint8_t> holds;                       ///< 1 for a mark that it holds for, of a set
    std::uint32_t low = 0;                                 ///< of a range of marks, both within
    std::uint32_t high = 0;                                ///<
    bool isSet = false;                                    ///< else a range
    bool isInverted = false;                               ///< whether it holds beyond the range
    veltrane_kit::Truth missing = veltrane_kit::Truth::NO; ///< what is said of a missing value

    bool IsConstant(veltrane_kit::Truth truth) const { return feature == kConstant && missing == truth; }
    /// Whether it holds for a mark that isn't that of a missing value.
    bool Holds(std::uint32_t mark) const {
        return isSet ? holds[mark] != 0 : (mark >= low && mark <= high) != isInverted;
    }
};

/// The features of the conditions of a forest, and what the conditions decide by them. It is asked twice: all
/// conditions are looked at, which tells what features there are and what their marks are, and then read.
class Decisions {
public:
    using Conditions = veltrane_kit::Conditions;
    using Condition = veltrane_kit::Condition;

    /// Takes a condition into account.
    /// @return false for one that asks for more than one field, or for more of one than a range or a set
    bool Look(const Conditions& conditions, const Condition& condition);

    /// To be called when all conditions were looked at.
    /// @param most the highest number that a mark may be
    /// @return false where there are more marks than that
    bool Settle(std::uint32_t most);

    /// Reads a condition that was looked at.
    /// @return false for one that holds for more than one range of numbers
    bool Read(const Conditions& conditions, const Condition& condition, Decision& decision);

    std::vector<Feature>& Features() { return fFeatures; }

private:
    /// What the simple conditions in a condition ask for.
    struct Asked {
        static constexpr int kNoSlot = -1;

        int slot = kNoSlot;
        bool isOneSlot = true;
        bool hasOrder = false;    ///< comparisons of numbers by order
        bool hasEqual = false;    ///< by equality
        bool hasNumbers = false;  ///< sets of numbers
        bool hasCategory = false; ///< categories, by their codes

        bool IsOneFeature() const {
            return isOneSlot && !(hasCategory && (hasOrder || hasEqual || hasNumbers)) && !(hasOrder && hasNumbers);
        }
        Feature::Kind KindOf() const;
    };

    static void Ask(const Conditions& conditions, const Condition& condition, Asked& asked);
    static void AddBounds(const Conditions& conditions, const Condition& condition, std::vector<double>& bounds,
                          Feature::Kind kind);
    static void AddCodes(const Conditions& conditions, const Condition& condition, Feature& feature);
    /// The place of a cut that was looked up last: both children of a node mostly ask for the same one.
    struct LastCut {
        int feature = Decision::kConstant;
        double cut = 0.0;
        std::uint32_t place = 0;
    };

    int FeatureOf(const Asked& asked) const;
    std::uint32_t PlaceOfCut(int feature, double cut);
    static bool ReadRanks(const Conditions& conditions, const Condition& condition, const Feature& feature,
                          Decision& decision);
    static void ReadMarks(const Conditions& conditions, const Condition& condition, const Feature& feature,
                          Decision& decision);

    std::vector<Feature> fFeatures;
    std::map<std::pair<int, Feature::Kind>, int> fPlaces; ///< of the features, by slot
    std::vector<CutLadder> fLadders;                      ///< by feature, of the cuts of ranks
    LastCut fLastCut;
};

} // namespace veltrane_forest

#endif
