#include "case_file.h"
#include "condition_reader.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/VTException.h>
#include <MCXML_900/MCXInputSource.h>

#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include <fstream>
#include <iostream>
#include <stdexcept>

using namespace MCVeltrane_900;

namespace {

constexpr XMLSize_t kMaxEntityExpansions = 1000;

/// Reads the document's conditions. Nothing but the document itself is opened.
void ReadDocument(const std::string& path, ConditionReader& reader) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot open " + path);
    }
    xercesc::SecurityManager security;
    security.setEntityExpansionLimit(kMaxEntityExpansions);
    xercesc::HandlerBase handler; // throws at the first fault
    xercesc::XercesDOMParser parser;
    parser.setErrorHandler(&handler);
    parser.setSecurityManager(&security);
    parser.setLoadExternalDTD(false);
    parser.setDisableDefaultEntityResolution(true);
    parser.setCreateEntityReferenceNodes(false);
    try {
        parser.parse(MCXML_900::MCXInputSource(in));
    } catch (const xercesc::SAXException&) {
        throw std::runtime_error(path + " is not well-formed");
    } catch (const xercesc::XMLException&) {
        throw std::runtime_error(path + " cannot be parsed");
    }
    reader.ParseFromTree(parser.getDocument(), "UTF-8");
}

/// One line for a case: the conditions that hold, "~" behind those that do by a surrogate; then those of which it isn't
/// known.
void PrintCase(const ConditionReader& reader, const ScoreCaseRecord& record) {
    const ScoreCaseRecord* derived =
        reader.Derived() != nullptr ? reader.Derived()->GetValuesForDerivedVars(&record, &reader.Fields()) : nullptr;
    std::string unknown;
    for (const Condition& condition : reader.Conditions()) {
        switch (condition.predicate->Evaluate(&record, derived)) {
        case ScorePredicate::PRED_TRUE:
            std::cout << ' ' << condition.name;
            break;
        case ScorePredicate::PRED_SURROGATE_TRUE:
            std::cout << ' ' << condition.name << '~';
            break;
        case ScorePredicate::PRED_UNKNOWN:
            unknown += ' ' + condition.name;
            break;
        default:
            break;
        }
    }
    std::cout << (unknown.empty() ? "" : " |" + unknown) << '\n';
}

} // namespace

// Prints which conditions of a document's tree or rule set hold for each case of a CSV file. Arguments: the document,
// the cases, and the texts that stand for a missing value.
int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: predicates DOCUMENT CASES [MISSING]...\n";
        return 2;
    }
    ModelFactory::Initialize(""); // starts the XML platform
    int result = 1;
    try {
        ConditionReader reader;
        ReadDocument(argv[1], reader);
        const CaseFile cases(argv[2], {argv + 3, argv + argc});
        for (std::size_t row = 0; row < cases.Size(); ++row) {
            std::cout << row + 1 << ':';
            PrintCase(reader, cases.Record(row, reader.Fields()));
        }
        result = 0;
    } catch (const VTException& error) {
        std::cerr << error.GetErrorCode() << ' ' << error.GetErrorMessage() << '\n';
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
    }
    ModelFactory::Terminate();
    return result;
}
