#include "columns/support/echo.h"

namespace veltrane::tests {

DocumentOptions TestOptions() {
    DocumentOptions options;
    options.modelList = VELTRANE_TEST_MODELS;
    return options;
}

std::string EchoText(const std::string& fields, const std::string& attributes) {
    return "<PMML version='4.4'><DataDictionary>" + fields + "</DataDictionary><EchoModel " + attributes + "/></PMML>";
}

Document Echo(const std::string& fields, const std::string& attributes) {
    return Document::OfBytes(EchoText(fields, attributes), TestOptions());
}

std::string FieldText(const std::string& name, const std::string& type, const std::string& attributes) {
    return "<DataField name='" + name + "' optype='" + (type == "string" ? "categorical" : "continuous") +
           "' dataType='" + type + "' " + attributes + "/>";
}

void Score(const Document& document, TestBatch& batch, TestResults& results) {
    Document::State state = document.NewState();
    document.Score(&batch.array, &batch.schema, state, &results.array, &results.schema);
}

} // namespace veltrane::tests
