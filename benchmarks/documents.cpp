#include "documents.h"

#include <MCVeltrane_900/ModelFactory.h>

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

using namespace MCVeltrane_900;

namespace veltrane::bench {

Loaded Load(const std::string& document) {
    std::istringstream in(document);
    ScoreDictionary* fields = nullptr;
    Loaded loaded;
    loaded.derived.reset(ModelFactory::GetTransformationDictionaryFromXML(in, fields, "UTF-8"));
    loaded.fields.reset(fields);
    return loaded;
}

void ParseDomOnly(const std::string& document) {
    xercesc::XercesDOMParser parser;
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(document.data()), document.size(), "document");
    parser.parse(source);
}

void ParseSaxOnly(const std::string& document) {
    const std::unique_ptr<xercesc::SAX2XMLReader> reader(xercesc::XMLReaderFactory::createXMLReader());
    reader->setFeature(xercesc::XMLUni::fgSAX2CoreValidation, false);
    reader->setFeature(xercesc::XMLUni::fgSAX2CoreNameSpaces, false);
    xercesc::DefaultHandler handler;
    reader->setContentHandler(&handler);
    reader->setErrorHandler(&handler);
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(document.data()), document.size(), "document");
    reader->parse(source);
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot open " + path);
    }
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string Document(const std::string& dataFields, int fieldCount, const std::string& derivedFields) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.1\">\n <Header/>\n <DataDictionary "
           "numberOfFields=\"" +
           std::to_string(fieldCount) + "\">\n" + dataFields + " </DataDictionary>\n <TransformationDictionary>\n" +
           derivedFields + " </TransformationDictionary>\n</PMML>\n";
}

namespace {

const char* const kOneDerivedField =
    "  <DerivedField name=\"d\" optype=\"continuous\" dataType=\"double\"><FieldRef field=\"x0\"/></DerivedField>\n";

const char* const kNumericField = "  <DataField name=\"x0\" optype=\"continuous\" dataType=\"double\"/>\n";

} // namespace

std::string ManyFields(int count) {
    std::string fields;
    for (int i = 0; i < count; ++i) {
        std::string name("x");
        name += std::to_string(i);
        if (i % 2 == 0) {
            fields += "  <DataField name=\"" + name + "\" optype=\"continuous\" dataType=\"double\"/>\n";
        } else {
            fields += "  <DataField name=\"" + name +
                      "\" optype=\"categorical\" dataType=\"string\">"
                      "<Value value=\"low\"/><Value value=\"middle\"/><Value value=\"high\"/></DataField>\n";
        }
    }
    return Document(fields, count, kOneDerivedField);
}

std::string InlineTable(int rows) {
    std::string table;
    for (int i = 0; i < rows; ++i) {
        const std::string number = std::to_string(i);
        table += "    <row><code>" + number + "</code><rate>" + number + ".5</rate></row>\n";
    }
    return Document(kNumericField, 1,
                    "  <DerivedField name=\"rate\" optype=\"continuous\" dataType=\"double\">\n"
                    "   <MapValues outputColumn=\"rate\"><FieldColumnPair field=\"x0\" column=\"code\"/>\n"
                    "   <InlineTable>\n" +
                        table + "   </InlineTable></MapValues></DerivedField>\n");
}

std::string ManyDerivedFields(int count) {
    std::string fields;
    for (int i = 0; i < count; ++i) {
        fields += "  <DerivedField name=\"d" + std::to_string(i) +
                  "\" optype=\"continuous\" dataType=\"double\"><NormContinuous field=\"x0\">"
                  "<LinearNorm orig=\"0\" norm=\"0\"/><LinearNorm orig=\"10\" norm=\"1\"/></NormContinuous>"
                  "</DerivedField>\n";
    }
    return Document(kNumericField, 1, fields);
}

namespace {

const char* const kGrades[] = {"low", "below", "middle", "above", "high"};

std::string ConditionFields() {
    std::string grades;
    for (const char* grade : kGrades) {
        grades += "<Value value=\"" + std::string(grade) + "\"/>";
    }
    std::string regions;
    for (int i = 0; i < 20; ++i) {
        regions += "<Value value=\"region " + std::to_string(i) + "\"/>";
    }
    return "  <DataField name=\"amount\" optype=\"continuous\" dataType=\"double\"/>\n"
           "  <DataField name=\"grade\" optype=\"ordinal\" dataType=\"string\">" +
           grades + "</DataField>\n  <DataField name=\"region\" optype=\"categorical\" dataType=\"string\">" + regions +
           "</DataField>\n";
}

std::string ConditionDocument(const std::string& conditions) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.1\">\n <DataDictionary "
           "numberOfFields=\"3\">\n" +
           ConditionFields() + " </DataDictionary>\n" + conditions + "</PMML>\n";
}

std::string AmountCondition(int i) {
    return " <SimplePredicate field=\"amount\" operator=\"lessOrEqual\" value=\"" + std::to_string(i) + ".5\"/>\n";
}

std::string RegionCondition(int i) {
    return " <SimplePredicate field=\"region\" operator=\"equal\" value=\"region " + std::to_string(i % 20) + "\"/>\n";
}

std::string GradeCondition(int i) {
    return " <SimplePredicate field=\"grade\" operator=\"greaterThan\" value=\"" + std::string(kGrades[i % 5]) +
           "\"/>\n";
}

std::string RegionSet(int i) {
    std::string regions;
    for (int k = 0; k < 5; ++k) {
        regions += "&quot;region " + std::to_string((i + k) % 20) + "&quot; ";
    }
    return " <SimpleSetPredicate field=\"region\" booleanOperator=\"isIn\"><Array n=\"5\" type=\"string\">" + regions +
           "</Array></SimpleSetPredicate>\n";
}

} // namespace

std::string ManySimplePredicates(int count) {
    std::string conditions;
    for (int i = 0; i < count; ++i) {
        conditions += i % 2 == 0 ? AmountCondition(i) : RegionCondition(i);
    }
    return ConditionDocument(conditions);
}

std::string ManyCompounds(int count) {
    std::string conditions;
    for (int i = 0; i < count; i += 4) {
        conditions += " <CompoundPredicate booleanOperator=\"and\">\n" + AmountCondition(i) + RegionCondition(i) +
                      GradeCondition(i) + RegionSet(i) + " </CompoundPredicate>\n";
    }
    return ConditionDocument(conditions);
}

namespace {

constexpr int kTreeFields = 20;

/// Appends the nodes of a balanced binary tree, as tools write them.
/// @param nodes how many are to be written, an odd number
void AppendNode(std::string& document, int nodes, int& next, const std::string& predicate) {
    const int id = next++;
    document += "<Node id=\"" + std::to_string(id) + "\" score=\"" + std::to_string(id % 1000) + ".5\" recordCount=\"" +
                std::to_string(nodes) + "\">" + predicate;
    if (nodes > 1) {
        const std::string field = "<SimplePredicate field=\"x" + std::to_string(id % kTreeFields) + "\" operator=\"";
        const std::string value = "\" value=\"0." + std::to_string(id * 7919L % 1000000) + "\"/>";
        int left = (nodes - 1) / 2;
        left -= left % 2 == 0 ? 1 : 0;
        AppendNode(document, left, next, field + "lessOrEqual" + value);
        AppendNode(document, nodes - 1 - left, next, field + "greaterThan" + value);
    }
    document += "</Node>\n";
}

std::string TreeHead() {
    std::string document =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.3\"><Header/><DataDictionary>\n"
        "<DataField name=\"y\" optype=\"continuous\" dataType=\"double\"/>\n";
    for (int i = 0; i < kTreeFields; ++i) {
        document += "<DataField name=\"x" + std::to_string(i) + "\" optype=\"continuous\" dataType=\"double\"/>\n";
    }
    return document + "</DataDictionary>";
}

std::string TreeSchema() {
    std::string schema = "<MiningSchema><MiningField name=\"y\" usageType=\"target\"/>\n";
    for (int i = 0; i < kTreeFields; ++i) {
        schema += "<MiningField name=\"x" + std::to_string(i) + "\"/>\n";
    }
    return schema + "</MiningSchema>\n";
}

} // namespace

std::string TreeDocument(int nodes) {
    int next = 1;
    std::string document = TreeHead() + "<TreeModel functionName=\"regression\">" + TreeSchema();
    AppendNode(document, nodes, next, "<True/>");
    return document + "</TreeModel></PMML>\n";
}

std::string ForestDocument(int trees, int nodes) {
    std::string document = TreeHead() + "<MiningModel functionName=\"regression\">" + TreeSchema() +
                           "<Segmentation multipleModelMethod=\"average\">\n";
    int next = 1;
    for (int i = 1; i <= trees; ++i) {
        document +=
            "<Segment id=\"" + std::to_string(i) + "\"><True/><TreeModel functionName=\"regression\">" + TreeSchema();
        AppendNode(document, nodes, next, "<True/>");
        document += "</TreeModel></Segment>\n";
    }
    return document + "</Segmentation></MiningModel></PMML>\n";
}

std::string RegressionDocument(int predictors) {
    std::string fields = "<DataField name=\"y\" optype=\"continuous\" dataType=\"double\"/>\n";
    std::string schema = "  <MiningField name=\"y\" usageType=\"target\"/>\n";
    std::string terms;
    for (int i = 0; i < predictors; ++i) {
        const std::string name = "\"x" + std::to_string(i) + "\"";
        fields += "  <DataField name=" + name + " optype=\"continuous\" dataType=\"double\"/>\n";
        schema += "  <MiningField name=" + name + " usageType=\"active\"/>\n";
        terms +=
            "   <NumericPredictor name=" + name + " exponent=\"1\" coefficient=\"" + std::to_string(i) + ".25\"/>\n";
    }
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<PMML version=\"4.3\">\n <Header/>\n <DataDictionary>\n  " +
           fields + " </DataDictionary>\n <RegressionModel functionName=\"regression\">\n <MiningSchema>\n" + schema +
           " </MiningSchema>\n  <RegressionTable intercept=\"1.5\">\n" + terms +
           "  </RegressionTable>\n </RegressionModel>\n</PMML>\n";
}

std::string CategoryArrays(int count, const char* quote) {
    std::string categories;
    for (int i = 0; i < 20; ++i) {
        categories += quote + ("category " + std::to_string(i)) + quote + " ";
    }
    std::string document = "<arrays>\n";
    for (int i = 0; i < count; ++i) {
        document += " <Array n=\"20\" type=\"string\">" + categories + "</Array>\n";
    }
    return document + "</arrays>\n";
}

} // namespace veltrane::bench
