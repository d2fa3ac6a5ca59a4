#include "factory/documents/xml_faults.h"
#include "factory/entries/factory_support.h"
#include "support/dom.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;

/// What becomes of the parser, and with it of the document, on each road through the factory.
namespace {

enum class Fate { DELETED, KEPT, NEVER_MADE };

struct Road {
    const char* name;
    const char* document;
    Names names;
    XmlFault fault;
    Fate withoutDictionary;
    Fate withDictionary;
};

const XmlFault kNoFault = XmlFault::NONE;

const Road kRoads[] = {
    {"Pmml", "<PMML><TreeModel/></PMML>", {"TreeModel"}, kNoFault, Fate::DELETED, Fate::DELETED},
    {"KordRegression", "<kord-ml><regression-model/></kord-ml>", {}, kNoFault, Fate::DELETED, Fate::DELETED},
    {"Kord", "<kord-ml><RegressionModel/></kord-ml>", {"RegressionModel"}, kNoFault, Fate::DELETED, Fate::DELETED},
    {"Tree", "<Tree/>", {}, kNoFault, Fate::DELETED, Fate::DELETED},
    {"Lattice", "<AssocLattice><TreeModel/></AssocLattice>", {"TreeModel"}, kNoFault, Fate::DELETED, Fate::DELETED},
    {"Sequences",
     "<SequentialAssociationLattice><TreeModel/></SequentialAssociationLattice>",
     {"TreeModel"},
     kNoFault,
     Fate::DELETED,
     Fate::DELETED},
    {"NoModelFromThePlugin", "<PMML><SilentModel/></PMML>", {"SilentModel"}, kNoFault, Fate::DELETED, Fate::DELETED},
    // Without a dictionary an unknown root is refused; with one it is searched, and the model may refer to it.
    {"UnknownRoot", "<Forest><TreeModel/></Forest>", {"TreeModel"}, kNoFault, Fate::DELETED, Fate::KEPT},
    {"UnknownRootWithoutAModel", "<Forest/>", {"TreeModel"}, kNoFault, Fate::DELETED, Fate::DELETED},
    {"NearestNeighbor",
     "<PMML><NearestNeighborModel/></PMML>",
     {"NearestNeighborModel"},
     kNoFault,
     Fate::NEVER_MADE,
     Fate::NEVER_MADE},
    // What the plug-in has made may refer to the document.
    {"PluginThrows", "<PMML><ThrowingModel/></PMML>", {"ThrowingModel"}, kNoFault, Fate::KEPT, Fate::KEPT},
    {"PluginThrowsUnderAnUnknownRoot",
     "<Forest><ThrowingModel/></Forest>",
     {"ThrowingModel"},
     kNoFault,
     Fate::DELETED,
     Fate::KEPT},
    {"PluginThrowsUnderARootOfTheTable",
     "<AssocLattice><ThrowingModel/></AssocLattice>",
     {"ThrowingModel"},
     kNoFault,
     Fate::KEPT,
     Fate::KEPT},
    {"NoModelInTheList", "<PMML><TreeModel/></PMML>", {"RegressionModel"}, kNoFault, Fate::DELETED, Fate::DELETED},
    {"NoPlugin", "<PMML><NoSuchModel/></PMML>", {"NoSuchModel"}, kNoFault, Fate::DELETED, Fate::DELETED},
    {"NoEntryInThePlugin", "<PMML><NoEntryModel/></PMML>", {"NoEntryModel"}, kNoFault, Fate::DELETED, Fate::DELETED},
    {"NoTranslator",
     "<PMML><NullTranslatorModel/></PMML>",
     {"NullTranslatorModel"},
     kNoFault,
     Fate::DELETED,
     Fate::DELETED},
    {"NotWellFormed", "<PMML><TreeModel/>", {"TreeModel"}, kNoFault, Fate::DELETED, Fate::DELETED},
    {"ParseFails", "<PMML><TreeModel/></PMML>", {"TreeModel"}, XmlFault::PARSE_FAILS, Fate::DELETED, Fate::DELETED},
    {"EmptyTag", "<PMML><TreeModel/></PMML>", {"TreeModel"}, XmlFault::TAG_IS_EMPTY, Fate::DELETED, Fate::DELETED},
    {"NoTag", "<PMML><TreeModel/></PMML>", {"TreeModel"}, XmlFault::TAG_IS_NULL, Fate::DELETED, Fate::DELETED},
    {"NoFirstElement",
     "<PMML><TreeModel/></PMML>",
     {"TreeModel"},
     XmlFault::LIST_HAS_NO_ELEMENT,
     Fate::DELETED,
     Fate::DELETED},
};

class ParserLifetime : public testing::TestWithParam<Road> {
protected:
    /// Expects the fate of the one parser of a call, once the call and its model are gone.
    template <typename Call>
    static void ExpectFate(Fate fate, Call call) {
        const Documents before = DocumentsSoFar();
        try {
            const SetXmlFault fault(GetParam().fault);
            const ModelPointer model(call());
        } catch (const VTException&) {
            // the fate of the parser alone is of interest here
        }
        const Documents after = DocumentsSoFar();
        EXPECT_EQ(after.made - before.made, fate == Fate::NEVER_MADE ? 0 : 1);
        EXPECT_EQ(after.gone - before.gone, fate == Fate::DELETED ? 1 : 0);
    }
};

TEST_P(ParserLifetime, WithoutADictionary) {
    ExpectFate(GetParam().withoutDictionary, [] {
        std::istringstream in(GetParam().document);
        return ModelFactory::MakeModelFromXML(in, GetParam().names, "");
    });
}

TEST_P(ParserLifetime, WithADictionary) {
    ExpectFate(GetParam().withDictionary, [] {
        std::istringstream in(GetParam().document);
        return ModelFactory::MakeModelFromXML(in, static_cast<ScoreDictionary*>(nullptr), GetParam().names, "");
    });
}

TEST_P(ParserLifetime, OfAFile) {
    const TemporaryFolder folder;
    folder.Write("model.xml", GetParam().document);
    std::string list;
    for (const std::string& name : GetParam().names) {
        list += name + "\n";
    }
    folder.Write("models.txt", list);
    ExpectFate(GetParam().withoutDictionary,
               [] { return ModelFactory::MakeModelFromXML(std::string("model.xml"), "models.txt", ""); });
}

TEST(ParserOfAnElement, IsTheHostsAlone) {
    const ParsedXml document = ParseXml("<TreeModel/>");
    const Documents before = DocumentsSoFar();
    const ModelPointer model(ModelFactory::MakeModelFromXML(document.Root(), Names{"TreeModel"},
                                                            static_cast<MCVeltrane_900::ScoreModel*>(nullptr), ""));
    EXPECT_NE(model, nullptr);
    EXPECT_EQ(DocumentsSoFar().made, before.made);
    EXPECT_EQ(DocumentsSoFar().gone, before.gone);
}

INSTANTIATE_TEST_SUITE_P(Roads, ParserLifetime, testing::ValuesIn(kRoads), NameOfRow());

TEST(TransformationParser, IsDeletedWhenTheDictionaryStandsAndWhenItFails) {
    for (const char* document : {"<PMML><DataDictionary/></PMML>", "<PMML/>", "<PMML>"}) {
        const Documents before = DocumentsSoFar();
        ScoreDictionary* dictionary = nullptr;
        try {
            std::istringstream in(document);
            delete ModelFactory::GetTransformationDictionaryFromXML(in, dictionary, "");
        } catch (const VTException&) {
            // refused, as two of them have to be
        }
        delete dictionary;
        const Documents after = DocumentsSoFar();
        EXPECT_EQ(after.made - before.made, 1) << document;
        EXPECT_EQ(after.gone - before.gone, 1) << document;
    }
}

TEST(StreamThatCantBeRewound, HoldsAnEmptyDocument) {
    for (const auto exceptions : {std::ios::goodbit, std::ios::failbit | std::ios::badbit}) {
        OneWayBuffer buffer(Pmml("<TreeModel/>"));
        std::istream in(&buffer);
        in.exceptions(exceptions);
        ExpectFailure([&in] { ModelFactory::MakeModelFromXML(in, Names{"TreeModel"}, ""); }, {CANNOT_OPEN_DOCUMENT});
    }
}

} // namespace
