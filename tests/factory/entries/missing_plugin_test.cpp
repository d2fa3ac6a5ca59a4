#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <dlfcn.h>

using namespace veltrane::tests;

namespace {

TEST(MissingPlugin, FailsWithTheModelName) {
    ExpectFailure([] { Build(Pmml("<NoSuchModel/>"), {"NoSuchModel"}); }, {NO_MODEL_LIBRARY, "NoSuchModel"});
    ExpectFailure([] { BuildWithDictionary(Pmml("<NoSuchModel/>"), nullptr, {"NoSuchModel"}); },
                  {NO_MODEL_LIBRARY, "NoSuchModel"});
}

TEST(MissingPlugin, IsALibraryWithoutItsEntry) {
    ExpectFailure([] { Build(Pmml("<NoEntryModel/>"), {"NoEntryModel"}); }, {NO_MODEL_LIBRARY, "NoEntryModel"});
    ExpectFailure([] { BuildWithDictionary(Pmml("<NoEntryModel/>"), nullptr, {"NoEntryModel"}); },
                  {NO_MODEL_LIBRARY, "NoEntryModel"});
}

TEST(MissingPlugin, IsAPluginWithoutATranslator) {
    ExpectFailure([] { Build(Pmml("<NullTranslatorModel/>"), {"NullTranslatorModel"}); },
                  {NO_MODEL_LIBRARY, "NullTranslatorModel"});
    ExpectFailure([] { BuildWithDictionary(Pmml("<NullTranslatorModel/>"), nullptr, {"NullTranslatorModel"}); },
                  {NO_MODEL_LIBRARY, "NullTranslatorModel"});
    EXPECT_EQ(Counter("NullTranslatorModel", "ListsPassed"), 0);
}

constexpr const char* kAlone = "VELTRANE_TEST_WITHOUT_PLUGINS";

/// Runs the test that is running once more, in a process whose library has no plug-ins beside it.
int RunWithoutPlugins() {
    const TemporaryFolder folder;
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&MCVeltrane_900::ModelFactory::Terminate), &info) == 0) {
        return -1;
    }
    const std::filesystem::path library = info.dli_fname;
    std::filesystem::create_symlink(library, folder.Path() / library.filename());
    return RunAgain(std::string(kAlone) + "=1 LD_LIBRARY_PATH='" + folder.Path().string() + "'");
}

class WithoutPlugins : public testing::Test {
protected:
    /// Whether the test runs where it can be judged.
    static bool Here() {
        if (std::getenv(kAlone) != nullptr) {
            return true;
        }
        EXPECT_EQ(RunWithoutPlugins(), 0);
        return false;
    }
};

using KeptLattice = WithoutPlugins;

TEST_F(KeptLattice, IsNamedAsInTheDocumentWhenItsPluginIsMissing) {
    if (Here()) {
        ExpectFailure([] { Build(Pmml("<AssociationModelLattice/>"), {"AssociationModelLattice"}); },
                      {NO_MODEL_LIBRARY, "AssociationModelLattice"});
        ExpectFailure(
            [] { BuildWithDictionary(Pmml("<AssociationModelLattice/>"), nullptr, {"AssociationModelLattice"}); },
            {NO_MODEL_LIBRARY, "AssociationModelLattice"});
    }
}

TEST_F(WithoutPlugins, RootsThatNameTheirModelFailWithIt) {
    if (Here()) {
        ExpectFailure([] { Build("<Tree/>", {}); }, {NO_MODEL_LIBRARY, "TreeModel"});
        ExpectFailure([] { Build("<kord-ml><regression-model/></kord-ml>", {}); },
                      {NO_MODEL_LIBRARY, "GeneralRegressionModel"});
        ExpectFailure([] { Build(Pmml("<NearestNeighborModel/>"), {"NearestNeighborModel"}); },
                      {NO_MODEL_LIBRARY, "NearestNeighborModel"});
    }
}

} // namespace
