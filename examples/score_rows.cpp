#include <veltrane.h>

#include <charconv>
#include <iostream>
#include <memory>
#include <string>

using namespace MCVeltrane_900;

// All digits of a number, in the shortest text that reads back to it; a stream by itself shows six.
std::string Text(double number) {
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr};
}

// Scores an applicant for several amounts. Arguments: the document, and the list of the models that have plug-ins.
int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: score_rows DOCUMENT LIST\n";
        return 2;
    }
    try {
        // Texts of the document, of the cases and of the results are UTF-8 in what follows; without a name, CP1252.
        const std::unique_ptr<ScoreModel> model(ModelFactory::MakeModelFromXML(argv[1], argv[2], "UTF-8"));
        if (!model) {
            return 1;
        }
        const std::unique_ptr<ScoreResult> result(model->CreateResult());
        CaseRecord applicant; // of one layout for all cases of a model; what it lacks is missing
        applicant.Add("Age", new NumericValue(34));
        applicant.Add("Income", new NumericValue(52000));
        applicant.Add("Amount", new NumericValue());
        applicant.Add("Housing", new StringValue("rent"));
        for (const double amount : {12000.0, 32500.5, NumericValue::GetSysmisValue()}) {
            applicant.SetValue("Amount", amount);
            std::cout << "amount " << (NumericValue::IsSystemMissingValue(amount) ? "missing" : Text(amount)) << ": ";
            const MCScore::MCStatus status = model->Score(&applicant, result.get());
            if (status.IsError() || result->GetResultValue() == nullptr) {
                std::cout << "no prediction, status " << status.GetErrorCode() << '\n';
                continue;
            }
            std::cout << result->GetResultValue()->GetString();
            // An output field of the document, by its name.
            if (const ScoreValue* risk = result->GetResultFields()->GetResultValue("Risk")) {
                std::cout << ", risk " << Text(risk->GetDouble());
            }
            // The probability of each category, of a classification.
            if (const auto* categories = dynamic_cast<const ScoreClsResult*>(result.get())) {
                for (const ScoreValue* category : categories->GetCategories()) {
                    std::cout << ", P(" << category->GetString() << ") "
                              << Text(categories->GetCategoryProbability(category));
                }
            }
            std::cout << '\n';
        }
    } catch (const VTException& error) { // the one exception of the library, which isn't a std::exception
        std::cerr << error.GetErrorCode() << ' ' << error.GetErrorMessage() << '\n';
        return 1;
    }
}
