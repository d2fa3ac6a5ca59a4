#include "factory/entries/factory_support.h"
#include "support/faults/failure.h"
#include "text/locale_folder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <sstream>

using namespace veltrane::tests;

/// Paths are given in UTF-8 and opened in the code page, which stays that of the first conversion: each test is alone
/// in its process.
namespace {

/// Files by their names as the system has them: a list and a document.
class FilePaths : public testing::Test {
protected:
    void Write(const std::string& list, const std::string& model) {
        fFolder.Write(list, "TreeModel");
        fFolder.Write(model, Pmml("<TreeModel/>"));
    }

    /// Whether all operations open these paths, given in UTF-8.
    static bool Open(const std::string& list, const std::string& model) {
        std::istringstream in(Pmml("<TreeModel/>"));
        std::string changeable = list;
        const ModelPointer fromStream(ModelFactory::MakeModelFromXML(in, changeable));
        const ModelPointer fromFiles(ModelFactory::MakeModelFromXML(model, list, ""));
        ModelFactory::Initialize(list);
        ModelFactory::Terminate();
        return fromStream && fromFiles && ModelFactory::fModelNames == Names{"TreeModel"};
    }

    const TemporaryFolder fFolder;
};

TEST_F(FilePaths, HaveBlanks) {
    Write(" my list.txt", "a model .xml");
    EXPECT_TRUE(Open(" my list.txt", "a model .xml"));
}

TEST_F(FilePaths, AreAbsoluteToo) {
    Write("my list.txt", "a model.xml");
    EXPECT_TRUE(Open((fFolder.Path() / "my list.txt").string(), (fFolder.Path() / "a model.xml").string()));
}

TEST_F(FilePaths, HaveNamesOutsideAscii) {
    Write("Größenliste.txt", "模型🙂.xml");
    EXPECT_TRUE(Open("Größenliste.txt", "模型🙂.xml"));
}

TEST_F(FilePaths, AreNamedInMessagesOutsideAscii) {
    ExpectFailure([] { Open("Größe 模型", ""); }, {CANNOT_OPEN_FILE, "Größe 模型"});
    Write("Liste", "Modell");
    ExpectFailure([] { Open("Liste", "Größe 模型"); }, {CANNOT_OPEN_DOCUMENT_FILE, "Größe 模型"});
}

class FilePathsInTheCodePage : public FilePaths {
protected:
    FilePathsInTheCodePage() {
        fLocales.Add("de_DE.ISO-8859-1", "de_DE", "ISO-8859-1");
        fHasLocale = std::setlocale(LC_ALL, "de_DE.ISO-8859-1") != nullptr;
    }

    void SetUp() override { ASSERT_TRUE(fHasLocale); }

    LocaleFolder fLocales;
    bool fHasLocale = false;
};

TEST_F(FilePathsInTheCodePage, AreConverted) {
    Write("Gr\366\337en.txt", "\xE4\xFC.xml");
    EXPECT_TRUE(Open("Größen.txt", "äü.xml"));
    ExpectFailure([] { Open("\xE4\xFC.xml", ""); }, {CANNOT_OPEN_FILE, "??.xml"});
}

TEST_F(FilePathsInTheCodePage, AreNamedInItsBytes) {
    ExpectFailure([] { Open("\u00E4", ""); }, {CANNOT_OPEN_FILE, "\xE4"});
    Write("Liste", "Modell");
    ExpectFailure([] { Open("Liste", "\u00E4"); }, {CANNOT_OPEN_DOCUMENT_FILE, "\xE4"});
}

TEST_F(FilePathsInTheCodePage, HaveAQuestionMarkForWhatItLacks) {
    Write("??.txt", "x?.xml");
    EXPECT_TRUE(Open("模型.txt", "x模.xml"));
}

TEST_F(FilePathsInTheCodePage, OfTheNeighborsAreConverted) {
    fFolder.Write("list", "NearestNeighborModel");
    fFolder.Write("model", Pmml("<NearestNeighborModel/>"));
    const ModelPointer model(ModelFactory::MakeModelFromXML("model", "list", "", "\u00E4"));
    EXPECT_EQ(RecordOf(model.get()).at("auxPath"), "\xE4");
}

} // namespace
