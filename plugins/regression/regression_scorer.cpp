#include "regression_scorer.h"

#include "kit/document/common_elements.h"
#include "kit/document/raise.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace veltrane_regression {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;
using veltrane_kit::Target;
using veltrane_kit::Word;

namespace {

constexpr Word<Normalization> kMethods[] = {
    {u"none", Normalization::NONE},     {u"simplemax", Normalization::SIMPLEMAX}, {u"softmax", Normalization::SOFTMAX},
    {u"logit", Normalization::LOGIT},   {u"probit", Normalization::PROBIT},       {u"cloglog", Normalization::CLOGLOG},
    {u"loglog", Normalization::LOGLOG}, {u"cauchit", Normalization::CAUCHIT},     {u"exp", Normalization::EXP},
};

constexpr const XMLCh* kMethod = u"normalizationMethod";

} // namespace

RegressionScorer::RegressionScorer(const Element& element, ModelParts& parts)
    : fNormalization(element.OneOfOr(kMethod, kMethods, Normalization::NONE)),
      fIsOrdinal(parts.target->Var().GetMLevel() == MCVeltrane_900::ScoreDictVar::LEVEL_ORDINAL),
      fIsClassification(parts.IsClassification()) {
    CheckNormalization(element, parts.IsClassification());
    ReadTables(element, parts);
    if (parts.IsClassification()) {
        CompleteCategories(parts);
    }
}

/// The exponential gives no probability, and a single number can't be shared out.
void RegressionScorer::CheckNormalization(const Element& element, bool isClassification) const {
    const Normalization without = isClassification ? Normalization::EXP : Normalization::SIMPLEMAX;
    if (fNormalization == without) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(kMethod), veltrane_kit::Narrow(kMethod), element.Tag(),
                                             isClassification
                                                 ? "none, simplemax, softmax, logit, probit, cloglog, loglog, cauchit"
                                                 : "none, softmax, logit, probit, cloglog, loglog, cauchit, exp");
    }
}

void RegressionScorer::ReadTables(const Element& element, ModelParts& parts) {
    std::set<int> known;
    for (const Element child : element.Children()) {
        if (!child.Is(u"RegressionTable")) {
            veltrane_kit::RequireCommonElement(child);
        } else if (parts.IsClassification()) {
            ReadCategoryTable(child, parts, known);
        } else if (fTables.empty()) {
            fTables.push_back({Prediction::kNoCategory, RegressionTable(child, *parts.inputs)});
        } else {
            Raise<Message::MORE_THAN_ONE>(child.Tag(), element.Tag());
        }
    }
    if (fTables.empty()) {
        Raise<Message::MISSING_NODE_IN>("RegressionTable", element.Tag());
    }
}

void RegressionScorer::ReadCategoryTable(const Element& element, ModelParts& parts, std::set<int>& known) {
    const int category = parts.target->CategoryOf(element, u"targetCategory");
    if (!known.insert(category).second) {
        Raise<Message::DUPLICATE_DEFINITION>("targetCategory", element.AnyText(u"targetCategory"), "RegressionModel");
    }
    fTables.push_back({category, RegressionTable(element, *parts.inputs)});
}

/// With a single table the target's other category has one without terms, and comes last: it has the rest. The links of
/// an ordinal target go by the order of its categories.
void RegressionScorer::CompleteCategories(const ModelParts& parts) {
    if (fTables.size() == 1) {
        if (parts.target->CategoryCount() != 2) {
            Raise<Message::REQUIRES_MORE_THAN_ONE>("RegressionTable", parts.tag);
        }
        fTables.push_back({1 - fTables.front().category, RegressionTable()});
    } else if (fIsOrdinal) {
        std::sort(fTables.begin(), fTables.end(),
                  [](const CategoryTable& a, const CategoryTable& b) { return a.category < b.category; });
    }
}

std::unique_ptr<veltrane_kit::Scorer::State> RegressionScorer::NewState() const {
    auto state = std::make_unique<Sums>();
    state->sums.resize(fTables.size());
    return state;
}

bool RegressionScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    if (!fIsClassification) {
        return PredictNumber(fields, prediction);
    }
    std::vector<double>& sums = static_cast<Sums&>(state).sums;
    for (std::size_t i = 0; i < fTables.size(); ++i) {
        if (!fTables[i].table.Sum(fields, sums[i])) {
            prediction.lacking = fTables[i].table.LackingSlot(fields);
            return false;
        }
    }
    if (!Normalize(fNormalization, fIsOrdinal, sums)) {
        return false;
    }
    // A category without a table has no share.
    prediction.probabilities.assign(prediction.probabilities.size(), 0.0);
    for (std::size_t i = 0; i < fTables.size(); ++i) {
        prediction.probabilities[static_cast<std::size_t>(fTables[i].category)] = sums[i];
    }
    prediction.TakeMostProbable();
    return true;
}

bool RegressionScorer::PredictNumber(const CaseView& fields, Prediction& prediction) const {
    double sum = 0.0;
    if (!fTables.front().table.Sum(fields, sum)) {
        prediction.lacking = fTables.front().table.LackingSlot(fields);
        return false;
    }
    // A link could make a finite number of an infinite sum, or of the NaN of two that go against each other.
    prediction.number = std::isfinite(sum) ? InverseLink(fNormalization, sum) : sum;
    return std::isfinite(prediction.number);
}

void RegressionScorer::Display(std::ostream& out, const Target& target) const {
    for (const Word<Normalization>& method : kMethods) {
        if (method.meaning == fNormalization) {
            out << "normalization: " << veltrane_kit::Narrow(method.text) << "\n";
        }
    }
    for (const CategoryTable& table : fTables) {
        out << "table";
        if (table.category != Prediction::kNoCategory) {
            out << " of " << target.Category(table.category).GetString();
        }
        out << "\n";
        table.table.Display(out);
    }
}

std::unique_ptr<const veltrane_kit::Scorer> MakeRegressionScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const RegressionScorer>(element, parts);
}

} // namespace veltrane_regression
