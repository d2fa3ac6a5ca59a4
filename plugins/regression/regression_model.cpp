#include "regression_model.h"

#include "kit/document/common_elements.h"
#include "kit/document/raise.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace veltrane_regression {

using veltrane_kit::Element;
using veltrane_kit::Inputs;
using veltrane_kit::Message;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;
using veltrane_kit::Word;

namespace {

constexpr Word<Normalization> kMethods[] = {
    {u"none", Normalization::NONE},     {u"simplemax", Normalization::SIMPLEMAX}, {u"softmax", Normalization::SOFTMAX},
    {u"logit", Normalization::LOGIT},   {u"probit", Normalization::PROBIT},       {u"cloglog", Normalization::CLOGLOG},
    {u"loglog", Normalization::LOGLOG}, {u"cauchit", Normalization::CAUCHIT},     {u"exp", Normalization::EXP},
};

constexpr const XMLCh* kMethod = u"normalizationMethod";

} // namespace

RegressionModel::RegressionModel(const Element& element, ModelParts& parts)
    : fNormalization(element.OneOfOr(kMethod, kMethods, Normalization::NONE)),
      fIsOrdinal(parts.target->Var().GetMLevel() == MCVeltrane_900::ScoreDictVar::LEVEL_ORDINAL) {
    CheckNormalization(element, parts.IsClassification());
    ReadTables(element, parts);
    if (parts.IsClassification()) {
        CompleteCategories(parts);
    }
    fSums.resize(fTables.size());
}

/// The exponential gives no probability, and a single number can't be shared out.
void RegressionModel::CheckNormalization(const Element& element, bool isClassification) const {
    const Normalization without = isClassification ? Normalization::EXP : Normalization::SIMPLEMAX;
    if (fNormalization == without) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(kMethod), veltrane_kit::Narrow(kMethod), element.Tag(),
                                             isClassification
                                                 ? "none, simplemax, softmax, logit, probit, cloglog, loglog, cauchit"
                                                 : "none, softmax, logit, probit, cloglog, loglog, cauchit, exp");
    }
}

void RegressionModel::ReadTables(const Element& element, ModelParts& parts) {
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

void RegressionModel::ReadCategoryTable(const Element& element, ModelParts& parts, std::set<int>& known) {
    const int category = parts.target->CategoryOf(element, u"targetCategory");
    if (!known.insert(category).second) {
        Raise<Message::DUPLICATE_DEFINITION>("targetCategory", element.AnyText(u"targetCategory"), "RegressionModel");
    }
    fTables.push_back({category, RegressionTable(element, *parts.inputs)});
}

/// With a single table the target's other category has one without terms, and comes last: it has the rest. The links of
/// an ordinal target go by the order of its categories.
void RegressionModel::CompleteCategories(const ModelParts& parts) {
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

bool RegressionModel::Predict(const Inputs& inputs, Prediction& prediction) {
    if (!IsClassification()) {
        return PredictNumber(inputs, prediction);
    }
    for (std::size_t i = 0; i < fTables.size(); ++i) {
        if (!fTables[i].table.Sum(inputs, fSums[i])) {
            prediction.lacking = fTables[i].table.LackingSlot(inputs);
            return false;
        }
    }
    if (!Normalize(fNormalization, fIsOrdinal, fSums)) {
        return false;
    }
    // A category without a table has no share.
    prediction.probabilities.assign(prediction.probabilities.size(), 0.0);
    for (std::size_t i = 0; i < fTables.size(); ++i) {
        prediction.probabilities[static_cast<std::size_t>(fTables[i].category)] = fSums[i];
    }
    prediction.TakeMostProbable();
    return true;
}

bool RegressionModel::PredictNumber(const Inputs& inputs, Prediction& prediction) const {
    double sum = 0.0;
    if (!fTables.front().table.Sum(inputs, sum)) {
        prediction.lacking = fTables.front().table.LackingSlot(inputs);
        return false;
    }
    // A link could make a finite number of an infinite sum, or of the NaN of two that go against each other.
    prediction.number = std::isfinite(sum) ? InverseLink(fNormalization, sum) : sum;
    return std::isfinite(prediction.number);
}

void RegressionModel::DisplayModel(std::ostream& out) const {
    for (const Word<Normalization>& method : kMethods) {
        if (method.meaning == fNormalization) {
            out << "normalization: " << veltrane_kit::Narrow(method.text) << "\n";
        }
    }
    for (const CategoryTable& table : fTables) {
        out << "table";
        if (table.category != Prediction::kNoCategory) {
            out << " of " << GetTarget().Category(table.category).GetString();
        }
        out << "\n";
        table.table.Display(out);
    }
}

} // namespace veltrane_regression
