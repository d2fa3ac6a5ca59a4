// A project outside the tree: reads a document, computes one case and checks the answer.
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

} // namespace

int main() {
    try {
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
