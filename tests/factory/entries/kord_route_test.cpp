#include "factory/documents/xml_faults.h"
#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreEncoder.h>

#include <gtest/gtest.h>
#include <xercesc/util/NumberFormatException.hpp>

#include <sstream>

using namespace veltrane::tests;

namespace {

const Names kNames = {"TreeModel", "KordDictionaryModel"};

std::string Kord(const std::string& variables) {
    return "<kord-ml version='1'><dictionary>" + variables + "</dictionary><KordDictionaryModel/></kord-ml>";
}

ModelPointer Make(const std::string& document) {
    std::istringstream in(document);
    return ModelPointer(ModelFactory::MakeModelFromXML(in, kNames, "UTF-8"));
}

TEST(KordRoute, GivesTheModelTheDictionaryOfItsDocument) {
    const ModelPointer model =
        Make(Kord("<variable name='Größe' storage-type='NUMERIC' measurement-level='CONTINUOUS'/>"
                  "<variable name='color' storage-type='STRING' measurement-level='NOMINAL'>"
                  "<categories><category value='r'/><category value='g'/></categories></variable>"));
    EXPECT_EQ(RecordOf(model.get()).at("plugin"), "KordDictionaryModel");
    EXPECT_EQ(RecordOf(model.get()).at("encoding"), "UTF-8");
    EXPECT_EQ(Counter("KordDictionaryModel", "TranslatorsDeleted"), 1);
    EXPECT_EQ(model->GetDictionary()->GetVarNames(), (Names{"Größe", "color"}));
    const ScoreDictVar* color = model->GetDictionary()->GetVar("color");
    EXPECT_EQ(color->GetNumberOfCats(), 2);
    EXPECT_EQ(color->GetEncoder()->GetNumberOfCategories(), 2);
}

TEST(KordRoute, FailuresOfTheDictionaryGoToTheHost) {
    ExpectFailure([] { Make(Kord("")); }, {NO_CHILD_ELEMENT, "dictionary"});
    ExpectFailure([] { Make("<kord-ml><KordDictionaryModel/></kord-ml>"); }, {MISSING_NODE, "dictionary"});
    EXPECT_EQ(PlatformsStarted(), 0);
    EXPECT_EQ(
        Make(Kord("<variable name='v' storage-type='STRING' measurement-level='ORDINAL'/>"))->GetDictionary()->Size(),
        1);
}

TEST(KordRoute, ExceptionsOfTheXmlLibraryOutliveItsPlatform) {
    try {
        Make(Kord("<variable name='v' storage-type='NUMERIC' measurement-level='ORDINAL'>"
                  "<format-spec decimals='2'/></variable>"));
        FAIL() << "no failure";
    } catch (const xercesc::NumberFormatException& failure) {
        EXPECT_EQ(PlatformsStarted(), 0);
        const std::u16string text = failure.getMessage();
        EXPECT_NE(text, u"");
    }
}

} // namespace
