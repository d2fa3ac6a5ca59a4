// Any bytes as a model list and a document, by every entry of the factory that the other targets leave out: those of
// files, of a dictionary, of an element, and the search for a nearest-neighbour model; and by that of columns. The
// first byte chooses the entry, the rest of the first line is the list.
#include "documents.h"
#include "run.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <veltrane/document.h>

#include <xercesc/dom/DOM.hpp>

#include <algorithm>
#include <sstream>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

using namespace MCVeltrane_900;
using namespace veltrane::fuzz;

namespace {

using Names = std::vector<std::string>;

/// A file in memory with a path.
class MemoryFile {
public:
    explicit MemoryFile(const char* name) : fDescriptor(memfd_create(name, 0)) { Require(fDescriptor >= 0); }
    ~MemoryFile() { close(fDescriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string PathOf(const std::string& content) const {
        Require(ftruncate(fDescriptor, 0) == 0);
        Require(pwrite(fDescriptor, content.data(), content.size(), 0) == static_cast<ssize_t>(content.size()));
        return "/proc/self/fd/" + std::to_string(fDescriptor);
    }

private:
    int fDescriptor;
};

struct Parts {
    std::size_t entry;
    std::string list;
    std::string document;
};

Parts PartsOf(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return {};
    }
    const char* const text = reinterpret_cast<const char*>(data);
    const char* const end = std::find(text + 1, text + size, '\n');
    return {data[0], std::string(text + 1, end), std::string(end == text + size ? end : end + 1, text + size)};
}

/// The names of the list's first words; each is looked for in the folders of libraries.
Names NamesOf(const std::string& list) {
    constexpr std::size_t kMostNames = 4;
    std::istringstream words(list);
    Names names;
    for (std::string word; names.size() < kMostNames && words >> word;) {
        names.push_back(word);
    }
    return names;
}

void Use(ScoreModel* made) {
    const std::unique_ptr<ScoreModel> model(made);
    if (model != nullptr) {
        std::ostringstream text;
        model->Display(text);
    }
}

void WithDictionary(const Parts& parts) {
    std::istringstream in(parts.document);
    BaseDictionary dictionary;
    Use(ModelFactory::MakeModelFromXML(in, &dictionary, NamesOf(parts.list), "UTF-8"));
}

void WithAuxiliaryPath(const Parts& parts) {
    std::istringstream in(parts.document);
    Use(ModelFactory::MakeModelFromXML(in, NamesOf(parts.list), "", "/"));
}

std::string ListPath(const Parts& parts) {
    static const MemoryFile file("list");
    return file.PathOf(parts.list);
}

std::string DocumentPath(const Parts& parts) {
    static const MemoryFile file("document");
    return file.PathOf(parts.document);
}

void WithList(const Parts& parts) {
    std::istringstream in(parts.document);
    std::string path = ListPath(parts);
    Use(ModelFactory::MakeModelFromXML(in, path));
}

void FromFile(const Parts& parts) {
    Use(ModelFactory::MakeModelFromXML(DocumentPath(parts), ListPath(parts), "UTF-8"));
}

void DictionariesFromFile(const Parts& parts) {
    Dictionaries read;
    ScoreDictionary* fields = nullptr;
    try {
        read.derived.reset(ModelFactory::GetTransformationDictionaryFromXML(DocumentPath(parts), fields, "UTF-8"));
    } catch (...) {
        read.fields.reset(fields);
        throw;
    }
    read.fields.reset(fields);
    if (read.derived != nullptr) {
        Compute(*read.derived, *read.fields);
    }
}

void FromElements(const Parts& parts) {
    constexpr XMLSize_t kMostElements = 12;
    const Names names = NamesOf(parts.list);
    WithTree(parts.document, [&names](xercesc::DOMDocument& document) {
        const xercesc::DOMNodeList* elements = document.getElementsByTagName(u"*");
        for (XMLSize_t i = 0; i < kMostElements && elements->item(i) != nullptr; ++i) {
            MayFail([&] {
                Use(ModelFactory::MakeModelFromXML(elements->item(i), names, static_cast<ScoreModel*>(nullptr),
                                                   "UTF-8"));
            });
            MayFail([&] { Use(ModelFactory::MakeModelFromXML(elements->item(i), names, nullptr, nullptr, "UTF-8")); });
        }
    });
}

/// Nothing of this entry is kept.
void InColumns(const Parts& parts) {
    veltrane::DocumentOptions options;
    options.modelList = ListPath(parts);
    const veltrane::Document document = veltrane::Document::OfFile(DocumentPath(parts), options);
    const veltrane::Document::State state = document.NewState();
    ArrowSchema schema{};
    document.OutputSchema(&schema);
    schema.release(&schema);
}

using Entry = void (*)(const Parts&);
constexpr Entry kEntries[] = {WithDictionary, WithAuxiliaryPath,    WithList,
                              FromFile,       DictionariesFromFile, FromElements};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Run run;
    const Parts parts = PartsOf(data, size);
    MayFail([&] { parts.entry == 'c' ? InColumns(parts) : kEntries[parts.entry % std::size(kEntries)](parts); });
    ModelFactory::fModelNames.clear(); // the first list becomes that of the process
    return 0;
}
