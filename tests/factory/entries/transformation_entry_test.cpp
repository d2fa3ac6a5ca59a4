#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

using namespace veltrane::tests;

namespace {

const std::string kData = "<DataDictionary numberOfFields='1'>"
                          "<DataField name='x' optype='continuous' dataType='double'/></DataDictionary>";
const std::string kField = "<DerivedField name='y' optype='continuous' dataType='double'>"
                           "<FieldRef field='x'/></DerivedField>";
const std::string kTransformations = "<TransformationDictionary>" + kField + "</TransformationDictionary>";

struct Dictionaries {
    std::unique_ptr<ScoreDictionary> data;
    std::unique_ptr<TransformationDictionary> derived;
};

Dictionaries Take(ScoreDictionary* data, TransformationDictionary* derived) {
    return {std::unique_ptr<ScoreDictionary>(data), std::unique_ptr<TransformationDictionary>(derived)};
}

Dictionaries Read(const std::string& document, const std::string& encoding = "UTF-8") {
    std::istringstream in(document);
    ScoreDictionary* data = nullptr;
    TransformationDictionary* derived = ModelFactory::GetTransformationDictionaryFromXML(in, data, encoding);
    return Take(data, derived);
}

TEST(TransformationEntry, GivesBothDictionaries) {
    const Dictionaries read = Read(Pmml(kData + kTransformations));
    ASSERT_NE(read.data, nullptr);
    ASSERT_NE(read.derived, nullptr);
    EXPECT_EQ(read.data->GetVarNames(), Names{"x"});
    EXPECT_EQ(read.derived->GetDerivedVarNames(), Names{"y"});
}

TEST(TransformationEntry, ATableWithABlankTextIsReadAndLookedUp) {
    // A blank text comes before nothing and is still not the last: in this order the keys contradict each other.
    const std::string data = "<DataDictionary numberOfFields='2'>"
                             "<DataField name='t' optype='categorical' dataType='string'/>"
                             "<DataField name='x' optype='continuous' dataType='double'/></DataDictionary>";
    const std::string map = "<MapValues outputColumn='out' defaultValue='0'><FieldColumnPair field='t' column='a'/>"
                            "<FieldColumnPair field='x' column='b'/><InlineTable>"
                            "<row><a>b</a><b>2</b><out>1</out></row><row><a>a</a><b>2</b><out>2</out></row>"
                            "<row><a></a><b>1</b><out>3</out></row><row><a>a</a><b>1</b><out>4</out></row>"
                            "</InlineTable></MapValues>";
    const Dictionaries read = Read(Pmml(data +
                                        "<TransformationDictionary><DerivedField name='y' optype='continuous' "
                                        "dataType='double'>" +
                                        map + "</DerivedField></TransformationDictionary>"));
    MCVeltrane_900::CaseRecord record;
    record.Add("t", new MCVeltrane_900::StringValue(""));
    record.Add("x", new MCVeltrane_900::NumericValue(0.0));
    const auto output = [&](const std::string& text, double number) {
        record.SetValue("t", text);
        record.SetValue("x", number);
        return read.derived->GetValuesForDerivedVars(&record, read.data.get())->Get("y")->GetDouble();
    };
    EXPECT_EQ(output("b", 2), 1);
    EXPECT_EQ(output("a", 2), 2);
    EXPECT_EQ(output("", 1), 3);
    EXPECT_EQ(output("a", 1), 4);
    EXPECT_EQ(output("c", 1), 0);
}

TEST(TransformationEntry, SetsUpTheDerivedRecord) {
    const Dictionaries read = Read(Pmml(kData + kTransformations));
    MCVeltrane_900::CaseRecord record;
    record.Add("x", new MCVeltrane_900::NumericValue(2.5));
    const MCVeltrane_900::ScoreCaseRecord* values = read.derived->GetValuesForDerivedVars(&record, read.data.get());
    ASSERT_NE(values, nullptr);
    const MCVeltrane_900::ScoreValue* value = values->Get("y");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->GetDouble(), 2.5);
}

TEST(TransformationEntry, GivesTextInTheAskedEncoding) {
    const std::string document = Pmml("<DataDictionary numberOfFields='1'><DataField name='\xC3\xA4' "
                                      "optype='continuous' dataType='double'/></DataDictionary>"
                                      "<TransformationDictionary/>");
    EXPECT_EQ(Read(document, "UTF-8").data->GetVarNames(), Names{"\xC3\xA4"});
    EXPECT_EQ(Read(document, "ISO-8859-1").data->GetVarNames(), Names{"\xE4"});
    EXPECT_EQ(Read(document, "").data->GetVarNames(), Names{"\xE4"});
}

TEST(TransformationEntry, LeavesEverythingAloneUnderAnotherRoot) {
    ScoreDictionary* const untouched = reinterpret_cast<ScoreDictionary*>(&ModelFactory::fInitialized);
    for (const char* const document : {"<kord-ml/>", "<pmml/>", "<p:PMML xmlns:p='u'/>", "<Tree><PMML/></Tree>"}) {
        std::istringstream in(document);
        ScoreDictionary* dictionary = untouched;
        EXPECT_EQ(ModelFactory::GetTransformationDictionaryFromXML(in, dictionary, ""), nullptr) << document;
        EXPECT_EQ(dictionary, untouched) << document;
    }
}

TEST(TransformationEntry, NeedsADataDictionaryFirst) {
    ExpectFailure([] { Read(Pmml("")); }, {MISSING_NODE, "DataDictionary"});
    ExpectFailure([] { Read(Pmml(kTransformations)); }, {MISSING_NODE, "DataDictionary"});
}

TEST(TransformationEntry, NeedsATransformationDictionary) {
    ScoreDictionary* dictionary = nullptr;
    std::istringstream in(Pmml(kData));
    ExpectFailure([&] { ModelFactory::GetTransformationDictionaryFromXML(in, dictionary, ""); },
                  {MISSING_NODE, "TransformationDictionary"});
    EXPECT_EQ(dictionary, nullptr);
}

TEST(TransformationEntry, LooksForDirectChildrenOnly) {
    ExpectFailure([] { Read(Pmml("<a>" + kData + kTransformations + "</a>")); }, {MISSING_NODE, "DataDictionary"});
}

TEST(TransformationEntry, GivesNoDictionaryWithoutDerivedFields) {
    const Dictionaries read = Read(Pmml(kData + "<TransformationDictionary/>"));
    EXPECT_EQ(read.derived, nullptr);
    ASSERT_NE(read.data, nullptr);
    EXPECT_EQ(read.data->Size(), 1);
}

TEST(TransformationEntry, LeavesAReadersFailureAsItIs) {
    ExpectFailure([] { Read(Pmml("<DataDictionary><DataField/></DataDictionary>" + kTransformations)); },
                  {MISSING_ATTRIBUTE_OF, "name", "DataField"});
}

TEST(TransformationEntry, HasTheDataDictionaryWhenTheSecondReaderFails) {
    std::istringstream in(Pmml(kData + "<TransformationDictionary><DerivedField/></TransformationDictionary>"));
    ScoreDictionary* dictionary = nullptr;
    ExpectFailure([&] { ModelFactory::GetTransformationDictionaryFromXML(in, dictionary, ""); },
                  {MISSING_ATTRIBUTE_OF, "name", "DerivedField"});
    ASSERT_NE(dictionary, nullptr);
    EXPECT_EQ(dictionary->Size(), 1);
    delete dictionary;
}

TEST(TransformationEntry, FailsForADocumentThatIsNotWellFormed) {
    for (const char* const document : {"", "x", "<PMML>", "<PMML/><a/>"}) {
        ExpectFailure([&] { Read(document); }, {CANNOT_OPEN_DOCUMENT});
    }
}

TEST(TransformationEntry, ReadsFromWhereTheStreamStands) {
    std::istringstream in("<<<" + Pmml(kData + kTransformations));
    in.ignore(3);
    ScoreDictionary* data = nullptr;
    const Dictionaries read = Take(nullptr, ModelFactory::GetTransformationDictionaryFromXML(in, data, ""));
    delete data;
    EXPECT_NE(read.derived, nullptr);
}

TEST(TransformationEntry, LeavesTheProcessAsItWas) {
    Read(Pmml(kData + kTransformations));
    EXPECT_FALSE(ModelFactory::fInitialized);
    EXPECT_TRUE(ModelFactory::fModelNames.empty());
}

TEST(TransformationEntryPath, ReadsAFile) {
    const TemporaryFolder folder;
    folder.Write("model.pmml", Pmml(kData + kTransformations));
    ScoreDictionary* data = nullptr;
    TransformationDictionary* derived =
        ModelFactory::GetTransformationDictionaryFromXML(std::string("model.pmml"), data, "UTF-8");
    const Dictionaries read = Take(data, derived);
    ASSERT_NE(read.derived, nullptr);
    EXPECT_EQ(read.derived->GetDerivedVarNames(), Names{"y"});
}

TEST(KeptTransformationEntryPath, FailsUnlikeTheModelFileWhenItCannotBeOpened) {
    ScoreDictionary* data = nullptr;
    ExpectFailure([&] { ModelFactory::GetTransformationDictionaryFromXML(std::string("no such file"), data, ""); },
                  {CANNOT_OPEN_FILE, "no such file"});
    ExpectFailure([&] { ModelFactory::GetTransformationDictionaryFromXML(std::string(), data, ""); },
                  {CANNOT_OPEN_FILE, ""});
    ExpectFailure([&] { ModelFactory::GetTransformationDictionaryFromXML(std::string("/"), data, ""); },
                  {CANNOT_OPEN_FILE, "/"});
}

class TransformationTrace : public testing::Test {
protected:
    std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(fFolder.Path())) {
            if (entry.path().extension() == ".log") {
                std::ifstream file(entry.path());
                for (std::string line; std::getline(file, line);) {
                    if (line.find("GetTransformationDictionaryFromXML") != std::string::npos) {
                        lines.push_back(line);
                    }
                }
            }
        }
        return lines;
    }
    TemporaryFolder fFolder;
};

TEST_F(TransformationTrace, TellsTheEndOfAStreamAndBothOfAPath) {
    const std::string name = "MCVeltrane_900::ModelFactory::GetTransformationDictionaryFromXML";
    fFolder.Write("sc.cfg", "trace_leve,1\n");
    Read("<a/>");
    EXPECT_EQ(Lines(), Names{"Exit:" + name});
    fFolder.Write("model.pmml", "<a/>");
    ScoreDictionary* data = nullptr;
    ModelFactory::GetTransformationDictionaryFromXML(std::string("model.pmml"), data, "");
    EXPECT_EQ(Lines(), (Names{"Exit:" + name, "Enter:" + name, "Exit:" + name}));
}

} // namespace
