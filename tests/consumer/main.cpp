// A project outside the tree: reads a document, computes one case and checks the answer. With an argument, the list of
// the installed plug-ins, it scores a model too.
#include <veltrane.h>

#include <cmath>
#include <iostream>
#include <memory>
#include <sstream>

using namespace MCVeltrane_900;

namespace {

const char* const kDocument = R"(<?xml version="1.0" encoding="UTF-8"?>
<PMML version="4.1">
 <DataDictionary numberOfFields="1">
  <DataField name="age" optype="continuous" dataType="double"/>
 </DataDictionary>
 <TransformationDictionary>
  <DerivedField name="scaled" optype="continuous" dataType="double">
   <NormContinuous field="age"><LinearNorm orig="0" norm="0"/><LinearNorm orig="100" norm="1"/></NormContinuous>
  </DerivedField>
 </TransformationDictionary>
</PMML>)";

const char* const kModel = R"(<?xml version="1.0" encoding="UTF-8"?>
<PMML version="4.1">
 <DataDictionary numberOfFields="2">
  <DataField name="price" optype="continuous" dataType="double"/>
  <DataField name="area" optype="continuous" dataType="double"/>
 </DataDictionary>
 <RegressionModel functionName="regression">
  <MiningSchema><MiningField name="price" usageType="predicted"/><MiningField name="area"/></MiningSchema>
  <RegressionTable intercept="100"><NumericPredictor name="area" coefficient="2.5"/></RegressionTable>
 </RegressionModel>
</PMML>)";

int ScoreModelOf(std::string list) {
    std::istringstream in(kModel);
    const std::unique_ptr<ScoreModel> model(ModelFactory::MakeModelFromXML(in, list));
    const std::unique_ptr<ScoreResult> result(model->CreateResult());
    CaseRecord record;
    record.Add("area", new NumericValue(40.0));
    if (!model->Score(&record, result.get()).IsOK()) {
        return 1;
    }
    std::cout << "price = " << result->GetResultValue()->GetDouble() << '\n';
    return result->GetResultValue()->GetDouble() == 200.0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    try {
        if (argc > 1 && ScoreModelOf(argv[1]) != 0) {
            return 1;
        }
        std::istringstream in(kDocument);
        ScoreDictionary* fields = nullptr;
        std::unique_ptr<TransformationDictionary> derived(
            ModelFactory::GetTransformationDictionaryFromXML(in, fields, "UTF-8"));
        std::unique_ptr<ScoreDictionary> owner(fields);
        CaseRecord record;
        record.Add("age", new NumericValue(25.0));
        const ScoreCaseRecord* values = derived->GetValuesForDerivedVars(&record, fields);
        const double scaled = values->Get("scaled")->GetDouble();
        std::cout << "scaled = " << scaled << '\n';
        return std::abs(scaled - 0.25) < 1e-15 ? 0 : 1;
    } catch (const VTException& failure) {
        std::cerr << failure.GetErrorMessage() << '\n';
        return 1;
    }
}
