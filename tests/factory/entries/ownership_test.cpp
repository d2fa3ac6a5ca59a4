#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;

/// Who deletes what, by the counters of the plug-ins. The leak detector sees to the parsers.
namespace {

TEST(Translator, IsDeletedOnceTheModelStands) {
    const Record record = Build(Pmml("<TreeModel/>"), {"TreeModel"});
    EXPECT_EQ(record.at("made"), "1");
    EXPECT_EQ(record.at("deleted"), "1");
    const Record second = BuildWithDictionary(Pmml("<TreeModel/>"), nullptr, {"TreeModel"});
    EXPECT_EQ(second.at("made"), "2");
    EXPECT_EQ(second.at("deleted"), "2");
}

TEST(Translator, IsDeletedUnderAnUnknownRoot) {
    EXPECT_EQ(BuildWithDictionary("<Forest><TreeModel/></Forest>", nullptr, {"TreeModel"}).at("deleted"), "1");
}

TEST(Translator, IsDeletedWhenItGivesNoModel) {
    Build(Pmml("<SilentModel/>"), {"SilentModel"});
    EXPECT_EQ(Counter("SilentModel", "TranslatorsDeleted"), 1);
}

TEST(KeptTranslator, IsNotDeletedWhenItThrows) {
    ExpectFailureWithDetail([] { Build(Pmml("<ThrowingModel/>"), {"ThrowingModel"}); },
                            {CANNOT_RESTORE_BASE_MODEL, "document"}, "the plug-in's own words");
    ExpectFailureWithDetail([] { BuildWithDictionary(Pmml("<ThrowingModel/>"), nullptr, {"ThrowingModel"}); },
                            {CANNOT_RESTORE_BASE_MODEL, "document+dictionary"}, "the plug-in's own words");
    EXPECT_EQ(Counter("ThrowingModel", "TranslatorsMade"), 2);
    EXPECT_EQ(Counter("ThrowingModel", "TranslatorsDeleted"), 0);
}

TEST(Model, IsTheHostsAndOutlivesTheCall) {
    std::istringstream in(Pmml("<TreeModel/>"));
    ModelPointer model(ModelFactory::MakeModelFromXML(in, Names{"TreeModel"}, ""));
    Build(Pmml("<TreeModel/>"), {"TreeModel"});
    EXPECT_EQ(RecordOf(model.get()).at("made"), "2");
    model.reset();
}

} // namespace
