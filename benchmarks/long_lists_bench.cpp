// Long lists of labels, missing ranges, split values and elements: the time an item should be much the same at each
// length.
#include <MCVeltrane_900/DOMElemUtility.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/DiscreteSplit.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <benchmark/benchmark.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <string>

using namespace MCVeltrane_900;

namespace {

/// Visits 0 to count - 1 in no order that a list has.
template <typename Visit>
void Scattered(int count, Visit visit) {
    for (int i = 0; i < count; ++i) {
        visit(static_cast<int>(i * 7919LL % count));
    }
}

void FillLabels(ValueLabelSet& set, int count) {
    for (int i = 0; i < count; ++i) {
        set.Add(new ValueLbl(new NumericValue(i), "label"));
    }
}

void RemoveLabels(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        ValueLabelSet set;
        FillLabels(set, count);
        state.ResumeTiming();
        Scattered(count, [&set](int i) {
            const ValueLbl key(new NumericValue(i), "key");
            benchmark::DoNotOptimize(set.Remove(&key));
            benchmark::DoNotOptimize(set.Contains(key.GetValue()));
        });
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void RemoveRanges(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        MissingValueSet set;
        for (int i = 0; i < count; ++i) {
            set.Add(i % 2 == 0 ? new Range(new NumericValue(i)) : new Range(-i, i, true, true));
        }
        state.ResumeTiming();
        Scattered(count, [&set](int i) {
            const Range key(i % 2 == 0 ? i : -i, i, true, true);
            benchmark::DoNotOptimize(set.Remove(&key));
            benchmark::DoNotOptimize(set.IsInAnyRange(key.GetMax()));
        });
    }
    state.SetItemsProcessed(state.iterations() * count);
}

/// A value that a split holds once, as often as the argument says, or with a blank that makes it another one.
void FindRepeatedValue(benchmark::State& state, const char* asked) {
    DictVar var("x", ScoreDictVar::STRING_VAR);
    var.SetNoSpaceTrim(true);
    DiscreteSplit split(&var);
    for (int i = 0; i < state.range(0); ++i) {
        split.PutSplit(new StringValue("the same category"), i);
    }
    const StringValue value(asked);
    for (auto _ : state) {
        benchmark::DoNotOptimize(split.GetSplitChildIndex(&value));
    }
}

/// Asking a set of which one value changes now and then, through a pointer that its host kept.
void AskChangedLabels(benchmark::State& state) {
    ValueLabelSet set;
    FillLabels(set, static_cast<int>(state.range(0)));
    auto* kept = new NumericValue(-1.0);
    set.Add(new ValueLbl(kept, "kept"));
    const NumericValue asked(5.0);
    int asks = 0;
    for (auto _ : state) {
        if (asks++ % 1000 == 0) {
            kept->SetDoubleValue(-2.0 - asks);
        }
        benchmark::DoNotOptimize(set.Contains(&asked));
    }
}

/// The same without changes.
void AskLabels(benchmark::State& state) {
    ValueLabelSet set;
    FillLabels(set, static_cast<int>(state.range(0)));
    const NumericValue asked(5.0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(set.Contains(&asked));
    }
}

void SetNumber(benchmark::State& state) {
    NumericValue value;
    double number = 0.0;
    for (auto _ : state) {
        value.SetDoubleValue(number += 1.0);
        benchmark::DoNotOptimize(value);
    }
}

/// Reads a document of its own while it lives.
class Document {
public:
    Document() {
        xercesc::XMLPlatformUtils::Initialize();
        fDocument =
            xercesc::DOMImplementationRegistry::getDOMImplementation(u"")->createDocument(nullptr, u"root", nullptr);
    }
    Document(const Document&) = delete;
    ~Document() {
        fDocument->release();
        xercesc::XMLPlatformUtils::Terminate();
    }

    xercesc::DOMElement* Root() const { return fDocument->getDocumentElement(); }
    xercesc::DOMElement* Append(const char16_t* tag) {
        xercesc::DOMElement* element = fDocument->createElement(tag);
        Root()->appendChild(element);
        return element;
    }

private:
    xercesc::DOMDocument* fDocument;
};

void ElementsByPosition(benchmark::State& state) {
    Document document;
    for (int i = 0; i < state.range(0); ++i) {
        document.Append(u"b");
    }
    PMMLTranslator translator("UTF-8");
    DOMElemUtility reader(&translator, nullptr);
    for (auto _ : state) {
        for (int i = 0; i < state.range(0); ++i) {
            benchmark::DoNotOptimize(reader.GetElemFromNodeList(document.Root(), "b", i, true));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// As many arrays as their variable has categories.
void ArraysOfManyCategories(benchmark::State& state) {
    Document document;
    xercesc::DOMElement* array = document.Append(u"Array");
    array->setTextContent(u"\"a\" \"b\"");
    DictVar var("x", ScoreDictVar::STRING_VAR);
    auto* encoder = new ScoreCatStringEncoder(0);
    var.SetEncoder(encoder);
    for (int i = 0; i < state.range(0); ++i) {
        encoder->Encode("category " + std::to_string(i));
    }
    PMMLTranslator translator("UTF-8");
    for (auto _ : state) {
        for (int i = 0; i < state.range(0); ++i) {
            benchmark::DoNotOptimize(translator.GetArrayElements(array, nullptr, &var));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Lengths(benchmark::internal::Benchmark* bench) {
    bench->RangeMultiplier(4)->Range(1000, 64000)->Unit(benchmark::kMillisecond);
}
void LengthsOfLookups(benchmark::internal::Benchmark* bench) {
    bench->RangeMultiplier(8)->Range(16, 8192);
}

BENCHMARK(RemoveLabels)->Apply(Lengths);
BENCHMARK(RemoveRanges)->Apply(Lengths);
BENCHMARK(ElementsByPosition)->Apply(Lengths);
BENCHMARK(ArraysOfManyCategories)->Apply(Lengths);
BENCHMARK_CAPTURE(FindRepeatedValue, Hit, "the same category")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK_CAPTURE(FindRepeatedValue, Miss, "the same category ")->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(AskLabels)->Apply(LengthsOfLookups);
BENCHMARK(AskChangedLabels)->Apply(LengthsOfLookups);
BENCHMARK(SetNumber);

} // namespace
