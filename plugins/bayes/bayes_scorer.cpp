#include "bayes_scorer.h"

#include "kit/document/common_elements.h"
#include "kit/document/raise.h"
#include "shares.h"

#include <algorithm>
#include <ostream>

namespace veltrane_bayes {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;
using veltrane_kit::Target;

BayesScorer::BayesScorer(const Element& element, ModelParts& parts) {
    if (!parts.IsClassification()) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(u"functionName"), "functionName", element.Tag(),
                                             "classification");
    }
    for (const Element child : element.Children()) {
        if (!child.Is(u"BayesInputs") && !child.Is(u"BayesOutput")) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    fModel = BayesReader(parts).Read(element);
}

std::unique_ptr<veltrane_kit::Scorer::State> BayesScorer::NewState() const {
    auto state = std::make_unique<Logs>();
    state->logs.resize(fModel.categories.size());
    return state;
}

bool BayesScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    std::vector<double>& logs = static_cast<Logs&>(state).logs;
    logs = fModel.logs;
    for (const BayesInput& input : fModel.inputs) {
        input.Add(fields, logs);
    }
    if (!ShareOut(logs)) {
        return false;
    }
    // A category that the model doesn't count has no share.
    prediction.probabilities.assign(prediction.probabilities.size(), 0.0);
    for (std::size_t i = 0; i < logs.size(); ++i) {
        prediction.probabilities[static_cast<std::size_t>(fModel.categories[i])] = logs[i];
    }
    prediction.TakeMostProbable();
    return true;
}

void BayesScorer::Display(std::ostream& out, const Target& target) const {
    out << "inputs of the model: " << fModel.inputs.size() << "\n"
        << "categories:";
    for (const int category : fModel.categories) {
        out << " " << target.Category(category).GetString();
    }
    out << "\n";
}

std::unique_ptr<const veltrane_kit::Scorer> MakeBayesScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const BayesScorer>(element, parts);
}

} // namespace veltrane_bayes
