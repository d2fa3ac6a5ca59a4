#include "vectors_scorer.h"

#include "machines_reader.h"
#include "vectors_state.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace veltrane_vectors {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;

VectorsScorer::VectorsScorer(const Element& element, ModelParts& parts)
    : fMachines(0), fIsClassification(parts.IsClassification()) {
    MachinesReader(fMachines, parts).Read(element);
    fCategories = static_cast<std::size_t>(parts.target->CategoryCount());
}

std::unique_ptr<veltrane_kit::Scorer::State> VectorsScorer::NewState() const {
    return std::make_unique<Sums>(fMachines);
}

bool VectorsScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    auto& sums = static_cast<Sums&>(state);
    if (!ReadCase(fields, sums.x.data(), prediction.lacking) || !Compute(sums)) {
        return false;
    }
    if (fIsClassification) {
        prediction.category = CategoryOf(sums.numbers.data(), 1, sums.votes);
    } else {
        prediction.number = sums.numbers.front();
    }
    return true;
}

/// A category that is missing counts nothing, as in a regression.
template <typename View>
bool VectorsScorer::ReadCase(const View& fields, double* x, int& lacking) const {
    for (const VectorField& field : fMachines.fields) {
        const bool isMissing = fields.IsMissing(field.slot);
        if (field.category != VectorField::kNoCategory) {
            *x++ = !isMissing && fields.Category(field.slot) == field.category ? field.coefficient : 0.0;
            continue;
        }
        if (isMissing && !field.ifMissing) {
            lacking = field.slot;
            return false;
        }
        *x++ = isMissing ? *field.ifMissing : fields.Number(field.slot);
    }
    return true;
}

/// @return false where a number isn't finite
bool VectorsScorer::Compute(Sums& sums) const {
    if (!std::all_of(sums.x.begin(), sums.x.end(), [](double number) { return std::isfinite(number); })) {
        return false;
    }
    const double* factors = sums.x.data();
    if (!fMachines.areOfFields) {
        fMachines.vectors.Prepare(fMachines.kernel, sums.x.data(), sums.prepared);
        for (const std::uint32_t vector : fMachines.used) {
            sums.kernels[vector] =
                fMachines.kernel.Of(fMachines.vectors.Sum(fMachines.kernel, vector, sums.x.data(), sums.prepared));
        }
        factors = sums.kernels.data();
    }
    bool areFinite = true;
    for (std::size_t i = 0; i < fMachines.machines.size(); ++i) {
        const Machine& machine = fMachines.machines[i];
        double sum = 0.0;
        for (std::size_t at = 0; at < machine.coefficients.size(); ++at) {
            sum += machine.coefficients[at] * factors[fMachines.areOfFields ? at : machine.places[at]];
        }
        sums.numbers[i] = sum + machine.bias;
        areFinite = areFinite && std::isfinite(sums.numbers[i]);
    }
    return areFinite;
}

/// Among equal ones the first category of the target.
/// @param numbers by machine, each a step behind the other
int VectorsScorer::CategoryOf(const double* numbers, std::size_t step, std::vector<std::int32_t>& votes) const {
    if (fMachines.method == Method::ONE_AGAINST_ALL) {
        std::size_t best = 0;
        for (std::size_t i = 1; i < fMachines.machines.size(); ++i) {
            const double difference = numbers[i * step] - numbers[best * step];
            const bool isEarlier = fMachines.machines[i].category < fMachines.machines[best].category;
            const bool wins = fMachines.maxWins ? difference > 0.0 : difference < 0.0;
            best = wins || (difference == 0.0 && isEarlier) ? i : best;
        }
        return fMachines.machines[best].category;
    }
    votes.assign(fCategories, 0);
    for (std::size_t i = 0; i < fMachines.machines.size(); ++i) {
        const Machine& machine = fMachines.machines[i];
        const double number = numbers[i * step];
        const bool wins = fMachines.maxWins ? number > machine.threshold : number < machine.threshold;
        ++votes[static_cast<std::size_t>(wins ? machine.category : machine.alternate)];
    }
    return static_cast<int>(std::max_element(votes.begin(), votes.end()) - votes.begin());
}

void VectorsScorer::Display(std::ostream& out, const veltrane_kit::Target& target) const {
    out << "fields: " << fMachines.fields.size() << ", vectors: " << fMachines.vectors.Count() << "\n";
    for (const Machine& machine : fMachines.machines) {
        out << "machine";
        if (machine.category != Machine::kNoCategory) {
            out << " of " << target.Category(machine.category).GetString();
        }
        if (machine.alternate != Machine::kNoCategory) {
            out << " against " << target.Category(machine.alternate).GetString();
        }
        out << ": coefficients " << machine.coefficients.size() << "\n";
    }
}

std::unique_ptr<const veltrane_kit::Scorer> MakeVectorsScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const VectorsScorer>(element, parts);
}

} // namespace veltrane_vectors
