#include "factory/entries/factory_support.h"

#include <MCVeltrane_900/VTDynamicLoadedLibrary.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace veltrane::tests {

using namespace MCVeltrane_900;

Record RecordOf(const MCVeltrane_900::ScoreModel* model) {
    Record record;
    if (model != nullptr) {
        std::stringstream text;
        model->Display(text);
        for (std::string line; std::getline(text, line);) {
            const std::size_t equals = line.find('=');
            record[line.substr(0, equals)] = line.substr(equals + 1);
        }
    }
    return record;
}

Record Build(const std::string& document, const Names& names, const std::string& encoding, const std::string& auxPath) {
    std::istringstream in(document);
    return RecordOf(ModelPointer(ModelFactory::MakeModelFromXML(in, names, encoding, auxPath)).get());
}

Record BuildWithDictionary(const std::string& document, MCVeltrane_900::ScoreDictionary* dictionary, const Names& names,
                           const std::string& encoding) {
    std::istringstream in(document);
    return RecordOf(ModelPointer(ModelFactory::MakeModelFromXML(in, dictionary, names, encoding)).get());
}

std::string Pmml(const std::string& content) {
    return "<?xml version=\"1.0\"?><PMML version=\"3.2\">" + content + "</PMML>";
}

int Counter(const std::string& plugin, const std::string& counter) {
    VTDynamicLoadedLibrary library(VTDynamicLoadedLibrary::MakeLibraryFileName(plugin + "900r"));
    const auto read = reinterpret_cast<int (*)()>(library.GetSymbolAddress(counter));
    if (read == nullptr) {
        throw std::runtime_error("no counter " + counter + " in " + plugin);
    }
    return read();
}

std::string PointerText(const void* pointer) {
    std::ostringstream text;
    text << pointer;
    return text.str();
}

std::string Repeat(const std::string& text, std::size_t count) {
    std::string result;
    result.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        result += text;
    }
    return result;
}

int RunAgain(const std::string& settings) {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    const std::string command = settings + " '" + std::filesystem::read_symlink("/proc/self/exe").string() +
                                "' --gtest_filter=" + test.test_suite_name() + "." + test.name() + " > /dev/null 2>&1";
    return std::system(command.c_str());
}

TemporaryFolder::TemporaryFolder() : fBefore(std::filesystem::current_path()) {
    std::string pattern = (std::filesystem::temp_directory_path() / "veltrane-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    fPath = pattern;
    std::filesystem::current_path(fPath);
}

TemporaryFolder::~TemporaryFolder() {
    std::filesystem::current_path(fBefore);
    std::filesystem::remove_all(fPath);
}

void TemporaryFolder::Write(const std::string& name, const std::string& content) const {
    std::ofstream(fPath / name, std::ios::binary) << content;
}

} // namespace veltrane::tests
