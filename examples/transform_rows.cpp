#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>
#include <MCVeltrane_900/VTException.h>

#include <iostream>
#include <memory>

using namespace MCVeltrane_900;

// Computes the derived fields of two applicants. Argument: the document.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: transform_rows DOCUMENT\n";
        return 2;
    }
    try {
        ScoreDictionary* fields = nullptr;
        const std::unique_ptr<TransformationDictionary> derived(
            ModelFactory::GetTransformationDictionaryFromXML(std::string(argv[1]), fields, "UTF-8"));
        const std::unique_ptr<ScoreDictionary> fieldsOwner(fields);
        if (!derived) {
            return 1;
        }

        CaseRecord applicant; // owns the values that are added to it
        applicant.Add("Age", new NumericValue(34));
        applicant.Add("Housing", new StringValue("own"));
        for (const double age : {34.0, 66.0}) {
            applicant.SetValue("Age", age);
            const ScoreCaseRecord* values = derived->GetValuesForDerivedVars(&applicant, fields);
            std::cout << "age " << age << ": " << values->Get("AgeBand")->GetString() << ", base rate "
                      << values->Get("BaseRate")->GetDouble() << '\n';
        }
    } catch (const VTException& error) {
        std::cerr << error.GetErrorCode() << ' ' << error.GetErrorMessage() << '\n';
        return 1;
    }
}
