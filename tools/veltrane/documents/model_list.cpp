#include "documents/model_list.h"

#include "documents/explanation.h"
#include "files/byte_stream.h"
#include "files/failure.h"
#include "run/report.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/VTException.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <dlfcn.h>
#include <string_view>

namespace veltrane::host {

using MCVeltrane_900::ModelFactory;
using MCVeltrane_900::VTException;

namespace {

/// The library parts names at blanks, commas, tabs and line feeds; what stands between two carriage returns is a name
/// here.
std::vector<std::string> WithoutCarriageReturns(const std::vector<std::string>& names) {
    std::vector<std::string> parted;
    for (const std::string& name : names) {
        for (std::size_t start = 0; start <= name.size();) {
            const std::size_t end = std::min(name.find('\r', start), name.size());
            if (end > start) {
                parted.push_back(name.substr(start, end - start));
            }
            start = end + 1;
        }
    }
    return parted;
}

/// Editors of some systems begin a file in UTF-8 with a byte order mark.
void DropByteOrderMark(std::vector<std::string>& names) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (names.empty() || !names.front().starts_with(kMark)) {
        return;
    }
    names.front().erase(0, kMark.size());
    if (names.front().empty()) {
        names.erase(names.begin());
    }
}

/// Why the system doesn't read a file; empty where it does.
std::string ReasonOf(const std::string& path) {
    try {
        char first;
        InputFile(path).Read(&first, 1);
    } catch (const UnreadableFile& reason) {
        return reason.what();
    }
    return {};
}

void Initialize(const std::string& path) {
    try {
        ModelFactory::Initialize(path);
    } catch (const VTException& failure) {
        throw ExplainedFailure(ToldText(failure), ReasonOf(path));
    }
}

} // namespace

bool ModelList::Has(const std::string& name) const {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// A file that is no list may hold anything, and much of it.
std::string ModelList::Text() const {
    constexpr std::size_t kShownNames = 20;
    constexpr std::size_t kShownName = 60;
    std::vector<std::string> shown;
    for (const std::string& name : names) {
        if (shown.size() == kShownNames) {
            shown.push_back("...");
            break;
        }
        shown.push_back(Escaped(name.substr(0, kShownName)) + (name.size() > kShownName ? "..." : ""));
    }
    return shown.empty() ? "none" : fmt::format("{}", fmt::join(shown, ", "));
}

std::string InstalledModelList() {
    Dl_info info{};
    std::string folder = ".";
    if (::dladdr(&ModelFactory::fInitialized, &info) != 0 && info.dli_fname != nullptr) {
        const std::string library = info.dli_fname;
        const std::size_t slash = library.rfind('/');
        folder = slash == std::string::npos ? "." : library.substr(0, slash);
    }
    return folder + "/veltrane/modeldll.txt";
}

ModelList StartLibrary(const std::optional<std::string>& path) {
    ModelList list{path.value_or(InstalledModelList()), {}};
    Initialize(list.path);
    DropByteOrderMark(ModelFactory::fModelNames);
    ModelFactory::fModelNames = WithoutCarriageReturns(ModelFactory::fModelNames);
    list.names = ModelFactory::fModelNames;
    return list;
}

void StartLibrary() {
    ModelFactory::Initialize(std::string());
}

} // namespace veltrane::host
