#include "descriptions/document_description.h"

#include "descriptions/field_description.h"
#include "descriptions/field_tables.h"
#include "formulas/result_types.h"

namespace veltrane::host {
namespace {

using Json = nlohmann::ordered_json;

const XmlNode& LocalTransformations(const DocumentFacts& facts) {
    return facts.model.Child("LocalTransformations");
}

void AddTypes(const XmlNode& parent, const char* element, std::map<std::string, std::string>& types) {
    for (const XmlNode* node : parent.Children(element)) {
        types.insert_or_assign((*node)["name"], StatedType(*node));
    }
}

/// A function that states no type has that of its expression.
void AddTypesOfBodies(const XmlNode& transformations, std::map<std::string, std::string>& functions) {
    for (const XmlNode* function : transformations.Children("DefineFunction")) {
        if (StatedType(*function).empty()) {
            StatedTypes inside{{}, functions};
            AddTypes(*function, "ParameterField", inside.fields);
            functions[(*function)["name"]] = TypeOfExpression(ExpressionOf(*function), inside);
        }
    }
}

} // namespace

StatedTypes TypesOf(const DocumentFacts& facts) {
    StatedTypes types;
    AddTypes(facts.dictionary, "DataField", types.fields);
    AddTypes(facts.transformations, "DerivedField", types.fields);
    AddTypes(LocalTransformations(facts), "DerivedField", types.fields);
    AddTypes(facts.transformations, "DefineFunction", types.functions);
    AddTypesOfBodies(facts.transformations, types.functions);
    return types;
}

Json DescribeFields(const DocumentFacts& facts) {
    const StatedTypes types = TypesOf(facts);
    Json described = {{"fields", Json::array()}, {"derivedFields", Json::array()}, {"functions", Json::array()}};
    for (const XmlNode* field : facts.dictionary.Children("DataField")) {
        described["fields"].push_back(DescribeDataField(*field));
    }
    for (const XmlNode* field : facts.transformations.Children("DerivedField")) {
        described["derivedFields"].push_back(DescribeDerivedField(*field, false, types));
    }
    for (const XmlNode* field : LocalTransformations(facts).Children("DerivedField")) {
        described["derivedFields"].push_back(DescribeDerivedField(*field, true, types));
    }
    for (const XmlNode* function : facts.transformations.Children("DefineFunction")) {
        described["functions"].push_back(DescribeFunction(*function, types));
    }
    return described;
}

std::string DocumentTables(const Json& description) {
    std::string text = Section("Fields", DataTable(description["fields"])) +
                       Section("Derived fields", ExpressionsTable(description["derivedFields"]));
    if (!description["functions"].empty()) {
        text += Section("Functions", FunctionsTable(description["functions"]));
    }
    text.pop_back();
    return text;
}

} // namespace veltrane::host
