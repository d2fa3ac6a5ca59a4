#include "kit/results/results.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/BaseModel.h>
#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/VTException.h>

#include <xercesc/dom/DOM.hpp>

#include <cmath>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// A plug-in for models that are parts of others, by the factory's road for elements:
///
///     <TermModel field="x" factor="2"/>
///
/// predicts the field times the factor, and with the attribute "sums" the sum of that over all cases so far; of a text
/// its length; an eighth of it is its standard error. With the attribute "function" it predicts the category "yes"
/// above 0, else "no", each with the probability 0.75. The attribute "none" gives no model.
namespace {

using namespace MCVeltrane_900;

std::shared_ptr<const veltrane_kit::ResultLayout> LayoutOf(bool isClassification) {
    auto layout = std::make_shared<veltrane_kit::ResultLayout>();
    for (const char* category : {"no", "yes"}) {
        if (isClassification) {
            layout->categories.push_back(std::make_unique<StringValue>(category));
        }
    }
    return layout;
}

class TermModel : public BaseModel {
public:
    TermModel(std::string field, double factor, bool sums, bool isClassification)
        : fField(std::move(field)), fFactor(factor), fSums(sums), fIsClassification(isClassification),
          fLayout(LayoutOf(isClassification)) {}

    bool SetOption(const std::string&, const std::string&) override { return false; }
    std::vector<std::string> GetInputNames() const override { return {fField}; }
    ScoreResult* CreateResult() const override {
        if (fIsClassification) {
            return new veltrane_kit::ClassificationResult(fLayout);
        }
        return new veltrane_kit::RegressionResult(fLayout);
    }

    MCScore::MCStatus Score(const ScoreCaseRecord* record, ScoreResult* result) override {
        const ScoreValue* value = record->Get(fField);
        if (value == nullptr) {
            return MCScore::MCStatus(ScoreModel::NO_PREDICTION, false);
        }
        const bool isText = value->GetType() == ScoreValue::STRING_VALUE;
        const double own = fFactor * (isText ? static_cast<double>(value->GetString().size()) : value->GetDouble());
        fSum = fSums ? fSum + own : own;
        if (!fIsClassification) {
            NumericValue number(fSum);
            result->SetResultValue(&number);
            static_cast<veltrane_kit::RegressionResult*>(result)->SetStandardError(std::abs(fSum) / 8.0);
            return {};
        }
        StringValue category(fSum > 0.0 ? "yes" : "no");
        StringValue other(fSum > 0.0 ? "no" : "yes");
        auto* answer = static_cast<veltrane_kit::ClassificationResult*>(result);
        answer->Clear();
        answer->SetResultValue(&category);
        answer->SetCategoryProbability(&category, 0.75);
        answer->SetCategoryProbability(&other, 0.25);
        return {};
    }

    bool SkipsCategoryProbabilities() override { return false; }
    void Display(std::ostream& out) const override { out << fField << " * " << fFactor << "\n"; }

private:
    std::string fField;
    double fFactor;
    bool fSums;
    bool fIsClassification;
    std::shared_ptr<const veltrane_kit::ResultLayout> fLayout;
    double fSum = 0.0;
};

class TermTranslator : public PMMLTranslator {
public:
    using PMMLTranslator::ParseFromTree;

    ScoreModel* ParseFromTree(xercesc::DOMDocument*, const std::string&) override { return nullptr; }

    ScoreModel* ParseFromTree(xercesc::DOMElement* element, ScoreDictionary* dictionary, ScoreDictionary*,
                              const std::string& encoding) override {
        CreateTranscoder(encoding);
        if (element->hasAttribute(u"none")) {
            return nullptr;
        }
        const std::string field = ToString(element->getAttribute(u"field"));
        if (dictionary->GetVar(field) == nullptr) {
            VTException failure;
            failure.PutErrorMessage(static_cast<int>(Message::MISSING_VARIABLE), field.c_str(), "DataDictionary");
            throw failure;
        }
        return new TermModel(field, std::stod(ToString(element->getAttribute(u"factor"))),
                             element->hasAttribute(u"sums"), element->hasAttribute(u"function"));
    }
};

} // namespace

extern "C" VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new TermTranslator();
}
