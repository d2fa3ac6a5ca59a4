// Reading the dictionary of a "kord-ml" document: one text variable with N categories and N missing values. The time a
// category stays the same as N grows.
#include <MCVeltrane_900/KORDTranslator.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <benchmark/benchmark.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <memory>
#include <string>

namespace {

class Translator : public MCVeltrane_900::KORDTranslator {
public:
    using KORDTranslator::ParseFromTree;
    MCVeltrane_900::ScoreModel* ParseFromTree(xercesc::DOMDocument*, const std::string&) override { return nullptr; }
};

std::string Values(int count, const char* prefix) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += "<category value='" + (prefix + std::to_string(i)) + "'/>";
    }
    return text;
}

void KordDictionary(benchmark::State& state) {
    xercesc::XMLPlatformUtils::Initialize();
    {
        const int count = static_cast<int>(state.range(0));
        const std::string text =
            "<dictionary><variable name='v' storage-type='STRING' measurement-level='NOMINAL'><categories>" +
            Values(count, "valid") + "</categories><missing-values>" + Values(count, "missing") +
            "</missing-values></variable></dictionary>";
        xercesc::XercesDOMParser parser;
        parser.parse(xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(text.data()), text.size(), "text"));
        Translator translator;
        translator.CreateTranscoder("UTF-8");
        for (auto _ : state) {
            const std::unique_ptr<MCVeltrane_900::ScoreDictionary> dictionary(
                translator.ParseDictionary(parser.getDocument()->getDocumentElement()));
            benchmark::DoNotOptimize(dictionary.get());
        }
        state.SetItemsProcessed(state.iterations() * count);
    }
    xercesc::XMLPlatformUtils::Terminate();
}

BENCHMARK(KordDictionary)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
