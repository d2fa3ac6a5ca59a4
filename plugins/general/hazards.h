#ifndef VELTRANE_PLUGINS_GENERAL_HAZARDS_H
#define VELTRANE_PLUGINS_GENERAL_HAZARDS_H

#include "factor.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace veltrane_general {

/// The cumulative hazard of a case without risks of its own, as time goes on: a step up at the time of each
/// BaselineCell.
class Baseline {
public:
    /// @param element a BaseCumHazardTables with cells, or a BaselineStratum
    /// @throws VTException 260120, 260285, 260153 for attributes, a hazard below 0 among them; 260203 for a time that
    ///         comes twice; 260322 for a hazard that falls
    explicit Baseline(const veltrane_kit::Element& element);

    /// @return 0 before the first time; kLacks behind the last time that the model knows of
    double At(double time) const;

private:
    struct Cell {
        double time;
        double hazard;
    };

    double fMaxTime;
    std::vector<Cell> fCells; ///< by time
};

/// The BaseCumHazardTables of a model: one baseline, or one for each stratum.
class Hazards {
public:
    /// @param element the model; its end time has to be there, an input or the target, and where a field tells strata
    ///                there are strata
    /// @param parts   the inputs grow by the fields that are read
    /// @throws VTException 260120, 260285 for attributes; 260125, 260161 and 260187 for fields; 260115, 260272, 260159,
    ///         260283 for elements; 260203 for a stratum that comes twice; what reading a Baseline throws
    Hazards(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    /// The cumulative hazard at the end of a case's time, without its own risks.
    /// @param fields a case, as CaseView or RowView
    /// @return kLacks for a time that is missing or that the model doesn't know of, and for a stratum that it doesn't
    ///         have
    template <typename View>
    double At(const View& fields) const {
        if (fields.IsMissing(fTimeSlot)) {
            return kLacks;
        }
        const double time = fields.Number(fTimeSlot);
        if (fStrataSlot == kNoSlot) {
            return fBaselines.front().At(time);
        }
        const auto place = fields.IsMissing(fStrataSlot) ? fPlaces.end() : fPlaces.find(fields.Category(fStrataSlot));
        return place == fPlaces.end() ? kLacks : fBaselines[place->second].At(time);
    }

    /// The slot of what is missing of a case; kNoSlot for nothing.
    int LackingSlot(const veltrane_kit::CaseView& fields) const;

    std::size_t Count() const { return fBaselines.size(); }

private:
    static constexpr int kNoSlot = veltrane_kit::Prediction::kNoSlot;

    void ReadStrata(const veltrane_kit::Element& tables, veltrane_kit::ModelParts& parts);

    int fTimeSlot;
    int fStrataSlot = kNoSlot;
    std::vector<Baseline> fBaselines;
    std::unordered_map<int, std::size_t> fPlaces; ///< of the strata, by the code of their value
};

} // namespace veltrane_general

#endif
