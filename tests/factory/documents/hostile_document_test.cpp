#include "factory/documents/hostile_documents.h"
#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <ctime>
#include <fstream>
#include <sstream>

using namespace veltrane::tests;

namespace {

#ifdef VELTRANE_SANITIZED
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

/// The most memory that this process has held, in megabytes.
long PeakMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) {
            return std::stol(line.substr(6)) / 1024;
        }
    }
    return 0;
}

/// Runs `action` within a second of processor time and 200 MB; a sanitizer takes its own on top.
template <typename Action>
void WithinBounds(Action action) {
    const std::clock_t start = std::clock();
    action();
    EXPECT_LT(static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC, kSanitized ? 10.0 : 1.0);
    if (!kSanitized) {
        EXPECT_LT(PeakMegabytes(), 200);
    }
}

std::unique_ptr<ScoreDictionary> ReadDictionaries(const std::string& document) {
    std::istringstream in(document);
    ScoreDictionary* dictionary = nullptr;
    try {
        delete ModelFactory::GetTransformationDictionaryFromXML(in, dictionary, "UTF-8");
    } catch (const MCVeltrane_900::VTException&) {
        delete dictionary;
        throw;
    }
    return std::unique_ptr<ScoreDictionary>(dictionary);
}

class Hostile : public testing::TestWithParam<HostileDocument> {};

TEST_P(Hostile, DocumentForAModel) {
    const std::string document = GetParam().make();
    WithinBounds([&] {
        if (GetParam().refused) {
            ExpectFailure([&] { Build(document, {"TreeModel"}); }, {CANNOT_OPEN_DOCUMENT});
        } else {
            ExpectFailure([&] { Build(document, {"NoSuchModel"}); }, {UNSUPPORTED_MODEL, ""});
        }
    });
}

TEST_P(Hostile, DocumentForDictionaries) {
    const std::string document = GetParam().make();
    WithinBounds([&] {
        if (GetParam().refused) {
            ExpectFailure([&] { ReadDictionaries(document); }, {CANNOT_OPEN_DOCUMENT});
        } else {
            ExpectFailure([&] { ReadDictionaries(document); }, {MISSING_NODE, "DataDictionary"});
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Rows, Hostile, testing::ValuesIn(HostileDocuments()), NameOfRow());

TEST(NestingBound, LeavesRoomForAThousandOfAKind) {
    const auto nested = [](std::size_t levels) {
        return "<PMML><TreeModel/>" + Repeat("<a>", levels - 1) + Repeat("</a>", levels - 1) + "</PMML>";
    };
    EXPECT_EQ(Build(nested(1100), {"TreeModel"}).at("plugin"), "TreeModel");
    ExpectFailure([&] { Build(nested(1101), {"TreeModel"}); }, {CANNOT_OPEN_DOCUMENT});
}

TEST(NestingBound, HoldsForANearestNeighborModelToo) {
    ExpectFailure([] { Build(Repeat("<a>", 1100) + "<NearestNeighborModel/>" + Repeat("</a>", 1100), {"TreeModel"}); },
                  {CANNOT_OPEN_DOCUMENT});
}

TEST(EntityBound, LeavesOrdinaryEntitiesAlone) {
    const std::string declared = "<!DOCTYPE PMML [<!ENTITY kind 'Tree'><!ENTITY inner '<a>&kind;</a>'>"
                                 "<!ENTITY outer '&inner;&inner;<TreeModel/>'>]>";
    EXPECT_EQ(Build(declared + "<PMML a='&kind;'>" + Repeat("&outer;", 500) + "</PMML>", {"TreeModel"}).at("plugin"),
              "TreeModel");
}

TEST(EntityBound, DoesNotCountPredefinedEntitiesAndCharacters) {
    EXPECT_EQ(
        Build("<PMML a='" + Repeat("&amp;&#65;", 20000) + "'>" + Repeat("&lt;&#x42;", 20000) + "<TreeModel/></PMML>",
              {"TreeModel"})
            .at("plugin"),
        "TreeModel");
}

TEST(EntityBound, LeavesUnusedExternalEntitiesAlone) {
    EXPECT_EQ(Build("<!DOCTYPE PMML [<!ENTITY e SYSTEM 'file:///etc/passwd'><!ENTITY % p SYSTEM '/etc/passwd'>]>"
                    "<PMML><TreeModel/></PMML>",
                    {"TreeModel"})
                  .at("plugin"),
              "TreeModel");
}

/// What a call does with bytes that may be anything: it gives a model, or it throws a VTException.
void CallWithAnything(const std::string& bytes) {
    try {
        Build(bytes, {"TreeModel", "RegressionModel"});
    } catch (const MCVeltrane_900::VTException& failure) {
        EXPECT_FALSE(failure.ConstructMessage().empty());
    }
    try {
        ReadDictionaries(bytes);
    } catch (const MCVeltrane_900::VTException& failure) {
        EXPECT_FALSE(failure.ConstructMessage().empty());
    }
}

const std::string kSample =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE PMML [<!ENTITY e \"text\"><!ATTLIST a b CDATA 'c'>]>\n"
    "<PMML version=\"3.2\" xmlns=\"http://u\"><Header copyright='&e;'/><!-- a comment --><?target a?>"
    "<DataDictionary numberOfFields=\"2\"><DataField name=\"x\" optype=\"continuous\" dataType=\"double\">"
    "<Interval closure=\"closedClosed\" leftMargin=\"0\" rightMargin=\"1\"/></DataField>"
    "<DataField name=\"\xC3\xA4\" optype=\"categorical\" dataType=\"string\"><Value value=\"A&amp;B\"/></DataField>"
    "</DataDictionary><TransformationDictionary><DerivedField name=\"y\" optype=\"continuous\" dataType=\"double\">"
    "<NormContinuous field=\"x\"><LinearNorm orig=\"0\" norm=\"1\"/><LinearNorm orig=\"1\" norm=\"2\"/>"
    "</NormContinuous></DerivedField></TransformationDictionary><TreeModel><![CDATA[<]]>&e;</TreeModel></PMML>\n";

TEST(AnyBytes, SampleIsRead) {
    EXPECT_EQ(Build(kSample, {"TreeModel"}).at("plugin"), "TreeModel");
    EXPECT_EQ(ReadDictionaries(kSample)->Size(), 2);
}

TEST(AnyBytes, EveryPrefixOfASample) {
    ModelFactory::Initialize("");
    // The last character is a line end behind the root.
    for (std::size_t length = 0; length + 1 < kSample.size(); ++length) {
        ExpectFailure([&] { Build(kSample.substr(0, length), {"TreeModel"}); }, {CANNOT_OPEN_DOCUMENT});
    }
}

TEST(AnyBytes, RandomChanges) {
    ModelFactory::Initialize("");
    unsigned state = 1;
    const auto next = [&state](std::size_t bound) {
        state = state * 1664525U + 1013904223U;
        return (state >> 8) % bound;
    };
    for (int round = 0; round < 2000; ++round) {
        std::string bytes = kSample;
        for (std::size_t changes = 1 + next(4); changes > 0; --changes) {
            bytes[next(bytes.size())] = static_cast<char>(next(256));
        }
        CallWithAnything(bytes);
    }
}

TEST(AnyBytes, WrongAndMissingEncodings) {
    const auto declared = [](const std::string& encoding) {
        return "<?xml version='1.0' encoding='" + encoding + "'?><PMML><TreeModel a='\xC3\xA4\xFF'/></PMML>";
    };
    EXPECT_EQ(Build(declared("ISO-8859-1"), {"TreeModel"}).at("plugin"), "TreeModel");
    for (const char* const encoding : {"UTF-8", "UTF-16", "UTF-32", "no such", "", "\xFF"}) {
        ExpectFailure([&] { Build(declared(encoding), {"TreeModel"}); }, {CANNOT_OPEN_DOCUMENT});
    }
    ExpectFailure([] { Build("<PMML><TreeModel a='\xE4'/></PMML>", {"TreeModel"}); }, {CANNOT_OPEN_DOCUMENT});
}

TEST(AnyBytes, DocumentsInOtherEncodings) {
    const std::string document = "<PMML><TreeModel/></PMML>";
    std::string wide = "\xFF\xFE";
    for (const char c : document) {
        wide += {c, '\0'};
    }
    EXPECT_EQ(Build(wide, {"TreeModel"}).at("plugin"), "TreeModel");
    EXPECT_EQ(Build("\xEF\xBB\xBF" + document, {"TreeModel"}).at("plugin"), "TreeModel");
}

TEST(AnyBytes, EmptyAndBinaryFiles) {
    const std::string binary[] = {"",
                                  std::string(1, '\0'),
                                  std::string(100000, '\0'),
                                  "\177ELF\x02\x01\x01",
                                  "PK\x03\x04",
                                  "\x1F\x8B\x08",
                                  "\xFF\xFE",
                                  "\xFE\xFF",
                                  "\xEF\xBB\xBF"};
    for (const std::string& bytes : binary) {
        ExpectFailure([&] { Build(bytes, {"TreeModel"}); }, {CANNOT_OPEN_DOCUMENT});
        ExpectFailure([&] { ReadDictionaries(bytes); }, {CANNOT_OPEN_DOCUMENT});
    }
}

} // namespace
