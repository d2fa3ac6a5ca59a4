#include "factory/entries/factory_support.h"

#include <MCVeltrane_900/VTDynamicLoadedLibrary.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

using namespace veltrane::tests;
using MCVeltrane_900::VTDynamicLoadedLibrary;

namespace {

/// The suffix of this platform, as the rule itself gives it: of an empty name nothing else remains.
std::string Suffix() {
    return VTDynamicLoadedLibrary::MakeLibraryFileName("");
}

std::string Upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
    return text;
}

TEST(LibraryFileName, HasTheSuffixOfThePlatform) {
#if defined(_WIN32)
    EXPECT_EQ(Suffix(), ".dll");
#else
    EXPECT_EQ(Suffix(), ".so");
#endif
}

TEST(LibraryFileName, GetsTheSuffix) {
    EXPECT_EQ(VTDynamicLoadedLibrary::MakeLibraryFileName("TreeModel900r"), "TreeModel900r" + Suffix());
    EXPECT_EQ(VTDynamicLoadedLibrary::MakeLibraryFileName("x" + Suffix() + "x"), "x" + Suffix() + "x" + Suffix());
}

TEST(LibraryFileName, KeepsASuffixInWhateverCase) {
    EXPECT_EQ(VTDynamicLoadedLibrary::MakeLibraryFileName("x" + Suffix()), "x" + Suffix());
    EXPECT_EQ(VTDynamicLoadedLibrary::MakeLibraryFileName("x" + Upper(Suffix())), "x" + Upper(Suffix()));
}

TEST(KeptLibraryFileName, IsAppendedToABareSuffix) {
    EXPECT_EQ(VTDynamicLoadedLibrary::MakeLibraryFileName(Suffix()), Suffix() + Suffix());
    EXPECT_EQ(VTDynamicLoadedLibrary::MakeLibraryFileName(Upper(Suffix())), Upper(Suffix()) + Suffix());
}

TEST(DynamicLibrary, KeepsTheSystemsTextOfTheLastFailure) {
    VTDynamicLoadedLibrary absent("no such library" + Suffix());
    EXPECT_EQ(absent.GetErrorText(), "");
    EXPECT_EQ(absent.GetSymbolAddress("GiveMyTranslator"), nullptr);
    EXPECT_NE(absent.GetErrorText().find("no such library"), std::string::npos);
    VTDynamicLoadedLibrary library("TreeModel900r" + Suffix());
    EXPECT_EQ(library.GetSymbolAddress("givemytranslator"), nullptr);
    EXPECT_NE(library.GetErrorText().find("givemytranslator"), std::string::npos);
    EXPECT_NE(library.GetSymbolAddress("GiveMyTranslator"), nullptr);
    EXPECT_EQ(library.GetErrorText(), "");
}

TEST(DynamicLibrary, LoadsByABareName) {
    VTDynamicLoadedLibrary library("TreeModel900r" + Suffix());
    EXPECT_EQ(library.Load(), 0);
    EXPECT_EQ(library.Load(), 0);
}

TEST(DynamicLibrary, FindsExportedSymbolsByTheirExactName) {
    VTDynamicLoadedLibrary library("TreeModel900r" + Suffix());
    EXPECT_NE(library.GetSymbolAddress("GiveMyTranslator"), nullptr);
    EXPECT_NE(library.GetSymbolAddress("PassModelNames"), nullptr);
    EXPECT_EQ(library.GetSymbolAddress("givemytranslator"), nullptr);
    EXPECT_EQ(library.GetSymbolAddress(""), nullptr);
}

TEST(DynamicLibrary, GivesTheSameModuleAgain) {
    VTDynamicLoadedLibrary first("TreeModel900r" + Suffix());
    VTDynamicLoadedLibrary second("TreeModel900r" + Suffix());
    EXPECT_EQ(first.GetSymbolAddress("GiveMyTranslator"), second.GetSymbolAddress("GiveMyTranslator"));
}

TEST(DynamicLibrary, StaysLoadedWhenTheObjectIsGone) {
    using Read = int (*)();
    Read read = nullptr;
    {
        VTDynamicLoadedLibrary library("TreeModel900r" + Suffix());
        read = reinterpret_cast<Read>(library.GetSymbolAddress("TranslatorsMade"));
    }
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read(), 0);
}

TEST(DynamicLibrary, GivesTheSystemsErrorForAMissingFile) {
    VTDynamicLoadedLibrary library("NoSuchModel900r" + Suffix());
    EXPECT_NE(library.Load(), 0);
    EXPECT_NE(library.Load(), 0);
    EXPECT_EQ(library.GetSymbolAddress("GiveMyTranslator"), nullptr);
}

TEST(DynamicLibrary, GivesTheSystemsErrorForAFileThatIsNoLibrary) {
    const TemporaryFolder folder;
    folder.Write("Broken900r" + Suffix(), "not a library");
    VTDynamicLoadedLibrary library((folder.Path() / ("Broken900r" + Suffix())).string());
    EXPECT_NE(library.Load(), 0);
    EXPECT_EQ(library.GetSymbolAddress("GiveMyTranslator"), nullptr);
}

} // namespace
