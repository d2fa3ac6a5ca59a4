// What reading the conditions of a document costs over a bare DOM parse of it. `ratio` is the time of parse, data
// dictionary and conditions over that of the parse alone.
#include "allocation_counter.h"
#include "documents.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScorePredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>

#include <benchmark/benchmark.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <ctime>
#include <memory>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::bench;

namespace {

/// Processor time, which other programs on the machine leave alone.
double Seconds(std::clock_t from) {
    return static_cast<double>(std::clock() - from) / CLOCKS_PER_SEC;
}

/// The fields of a document and its conditions, which refer to them.
struct Conditions {
    std::unique_ptr<ScoreDictionary> fields;
    std::vector<std::unique_ptr<ScorePredicate>> predicates;
};

/// Parses and reads the document, as a plug-in does that has its translator from the library.
Conditions ReadConditions(const std::string& document) {
    xercesc::XercesDOMParser parser;
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    parser.parse(
        xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(document.data()), document.size(), "document"));
    PMMLTranslator translator("UTF-8");
    xercesc::DOMNode* element = BaseTranslator::GetFirstChildElt(parser.getDocument()->getDocumentElement());
    Conditions conditions;
    conditions.fields.reset(translator.ParseDictionary(element, true));
    const ScoreDictionary* fields = conditions.fields.get();
    while ((element = BaseTranslator::GetNextSiblingElt(element)) != nullptr) {
        if (BaseTranslator::IsEqual(element->getNodeName(), "SimplePredicate")) {
            conditions.predicates.emplace_back(translator.ParsePredicate(element, fields, nullptr, false));
        } else {
            conditions.predicates.emplace_back(translator.ParseCompoundPredicate(element, fields, nullptr, false));
        }
    }
    return conditions;
}

void Read(benchmark::State& state, std::string (*make)(int)) {
    ModelFactory::Initialize("");
    const std::string document = make(static_cast<int>(state.range(0)));
    double parse = 0.0;
    double whole = 0.0;
    for (auto _ : state) {
        std::clock_t start = std::clock();
        ParseDomOnly(document);
        parse += Seconds(start);
        start = std::clock();
        const Conditions conditions = ReadConditions(document);
        whole += Seconds(start);
        benchmark::DoNotOptimize(conditions.predicates.data());
    }
    const std::size_t before = LiveBytes();
    const Conditions conditions = ReadConditions(document);
    state.counters["built MB"] = static_cast<double>(LiveBytes() - before) / 1e6;
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["parse ms"] = parse / rounds * 1e3;
    state.counters["whole ms"] = whole / rounds * 1e3;
    state.counters["ratio"] = whole / parse;
}

BENCHMARK_CAPTURE(Read, SimplePredicates, ManySimplePredicates)
    ->Arg(100000)
    ->Arg(200000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Read, Compounds, ManyCompounds)->Arg(100000)->Arg(200000)->Unit(benchmark::kMillisecond);

} // namespace
