#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/BaseModel.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/VTException.h>
#include <veltrane/column_scorer.h>

#include <xercesc/dom/DOM.hpp>

#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// A plug-in that scores in columns: it gives back each field as it comes, and the cells that aren't readable as texts
/// in a column of their own. A field with the attribute "values" gives categories, the words there. An attribute
/// "fault" of the model makes it fail in one of several ways, "lag" makes it look back: it adds up.
namespace {

using namespace MCVeltrane_900;
using veltrane::ColumnField;
using veltrane::DataType;

const std::map<std::string, DataType> kTypes{
    {"string", DataType::STRING},
    {"boolean", DataType::BOOLEAN},
    {"integer", DataType::INTEGER},
    {"float", DataType::FLOAT},
    {"double", DataType::DOUBLE},
    {"date", DataType::DATE},
    {"time", DataType::TIME},
    {"dateTime", DataType::DATE_TIME},
    {"dateDaysSince[0]", DataType::DATE_DAYS_SINCE_0},
    {"dateDaysSince[1960]", DataType::DATE_DAYS_SINCE_1960},
    {"dateDaysSince[1970]", DataType::DATE_DAYS_SINCE_1970},
    {"dateDaysSince[1980]", DataType::DATE_DAYS_SINCE_1980},
    {"timeSeconds", DataType::TIME_SECONDS},
    {"dateTimeSecondsSince[0]", DataType::DATE_TIME_SECONDS_SINCE_0},
    {"dateTimeSecondsSince[1960]", DataType::DATE_TIME_SECONDS_SINCE_1960},
    {"dateTimeSecondsSince[1970]", DataType::DATE_TIME_SECONDS_SINCE_1970},
    {"dateTimeSecondsSince[1980]", DataType::DATE_TIME_SECONDS_SINCE_1980},
};

/// Nothing that a host could know.
struct ForeignException {};

class EchoModel : public BaseModel {
public:
    bool SetOption(const std::string& name, const std::string& value) override {
        fFactor = name == "factor" ? std::stod(value) : fFactor;
        return name == "factor";
    }
    std::vector<std::string> GetInputNames() const override { return {}; }
    ScoreResult* CreateResult() const override { return nullptr; }
    MCScore::MCStatus Score(const ScoreCaseRecord*, ScoreResult*) override { return MCScore::MCStatus(1, false); }
    bool SkipsCategoryProbabilities() override { return false; }
    void Display(std::ostream&) const override {}

    std::vector<ColumnField> fFields;
    std::string fFault;
    bool fLooksBack = false;
    double fFactor = 1;
};

class EchoScorer : public veltrane::ColumnScorer {
public:
    explicit EchoScorer(const EchoModel& model) : fModel(model), fInputs(model.fFields) {
        for (const ColumnField& field : fInputs) {
            fOutputs.push_back(field);
            fOutputs.push_back({field.name + " unreadable", DataType::STRING, false, {}});
            fOutputs.push_back({field.name + " mark", DataType::DOUBLE, false, {}});
        }
    }

    const std::vector<ColumnField>& Inputs() const override { return fInputs; }
    const std::vector<ColumnField>& Outputs() const override { return fOutputs; }
    bool NeedsOrder() const override { return fModel.fLooksBack; }

    std::unique_ptr<State> NewState() const override {
        if (fModel.fFault == "no state") {
            throw ForeignException();
        }
        return std::make_unique<Sum>();
    }

    void Score(const veltrane::InputBlock& in, State& state, const veltrane::OutputBlock& out) const override {
        for (std::size_t field = 0; field < fInputs.size(); ++field) {
            const veltrane::InputColumn& column = in.columns[field];
            const veltrane::OutputColumn* given = out.columns + 3 * field;
            for (std::size_t row = 0; row < in.rows; ++row) {
                given[1].texts[row] = {};
                given[2].numbers[row] = static_cast<double>(column.dictionaryMark);
                if (given[0].numbers != nullptr) {
                    given[0].numbers[row] = Number(column, row, static_cast<Sum&>(state));
                } else if (given[0].codes != nullptr) {
                    given[0].codes[row] = Code(fInputs[field], Text(column, row));
                } else {
                    given[0].texts[row] = Text(column, row);
                }
            }
            for (std::size_t at = 0; at < column.unreadableCount; ++at) {
                given[1].texts[column.unreadable[at].row] = column.unreadable[at].text;
            }
        }
    }

private:
    struct Sum : State {
        double sum = 0;
    };

    double Number(const veltrane::InputColumn& column, std::size_t row, Sum& state) const {
        const double number = column.numbers == nullptr ? NAN : column.numbers[row] * fModel.fFactor;
        return fModel.fLooksBack ? state.sum += number : number;
    }

    std::string_view Text(const veltrane::InputColumn& column, std::size_t row) const {
        if (fModel.fFault == "no UTF-8") {
            return "a\xff";
        }
        if (fModel.fFault == "long") {
            return {"a", std::size_t{1} << 31}; // nobody may look at so much
        }
        if (column.codes != nullptr) {
            return column.codes[row] < 0 ? std::string_view() : column.dictionary[column.codes[row]];
        }
        return column.texts == nullptr ? std::string_view() : column.texts[row];
    }

    static std::int32_t Code(const ColumnField& field, std::string_view text) {
        for (std::size_t code = 0; code < field.categories.size(); ++code) {
            if (text.data() != nullptr && field.categories[code] == text) {
                return static_cast<std::int32_t>(code);
            }
        }
        return -1;
    }

    const EchoModel& fModel;
    std::vector<ColumnField> fInputs;
    std::vector<ColumnField> fOutputs;
};

class EchoTranslator : public PMMLTranslator {
public:
    using PMMLTranslator::ParseFromTree;

    ScoreModel* ParseFromTree(xercesc::DOMDocument* document, const std::string& encoding) override {
        CreateTranscoder(encoding);
        xercesc::DOMElement* root = document->getDocumentElement();
        const auto* element = static_cast<xercesc::DOMElement*>(GetChildByTagForced(root, "EchoModel"));
        auto model = std::make_unique<EchoModel>();
        model->fFault = ToString(GetAttribute(element, "fault"));
        model->fLooksBack = !ToString(GetAttribute(element, "lag")).empty();
        model->SetScoreDictionary(std::make_unique<BaseDictionary>().release());
        if (model->fFault == "no model") {
            return nullptr;
        }
        if (model->fFault == "no dictionary") {
            return std::make_unique<EchoModel>().release();
        }
        if (model->fFault == "foreign") {
            throw ForeignException();
        }
        for (auto* node = GetFirstChildElt(GetChildByTagForced(root, "DataDictionary")); node != nullptr;
             node = GetNextSiblingElt(node)) {
            model->fFields.push_back(ReadField(*static_cast<xercesc::DOMElement*>(node)));
        }
        return model.release();
    }

private:
    ColumnField ReadField(const xercesc::DOMElement& element) {
        ColumnField field;
        field.name = ToString(GetAttributeForced(&element, "name"));
        field.type = kTypes.at(ToString(GetAttributeForced(&element, "dataType")));
        field.isNeeded = ToString(GetAttribute(&element, "needed")) != "no";
        std::string words = ToString(GetAttribute(&element, "values"));
        for (std::size_t end = words.find(' '); !words.empty(); end = words.find(' ')) {
            field.categories.push_back(words.substr(0, end));
            words.erase(0, end == words.npos ? end : end + 1);
        }
        return field;
    }
};

} // namespace

extern "C" VELTRANE_API ScoreTranslator* GiveMyTranslator() {
    return new EchoTranslator;
}

extern "C" VELTRANE_API veltrane::ColumnScorer* GiveMyColumnScorer(ScoreModel* model, int version) {
    const auto& echo = static_cast<const EchoModel&>(*model);
    const bool isKnown = version == veltrane::ColumnScorer::kVersion && echo.fFault != "no scorer";
    return isKnown ? new EchoScorer(echo) : nullptr;
}
