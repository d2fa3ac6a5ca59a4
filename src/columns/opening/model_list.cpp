#include "columns/opening/model_list.h"

#include "factory/entries/model_names.h"
#include "platform/platform.h"

#include <algorithm>
#include <string_view>

namespace veltrane::columns {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string InstalledModelList() {
    return platform::LibraryFolder() + "veltrane" + platform::kPathSeparator + "modeldll.txt";
}

} // namespace

std::vector<std::string> ReadModelList(const std::string& path) {
    std::vector<std::string> names;
    factory::ReadModelNames(path.empty() ? InstalledModelList() : path, names);
    if (!names.empty() && names.front().starts_with(kByteOrderMark)) {
        names.front().erase(0, kByteOrderMark.size());
    }
    for (std::string& name : names) {
        std::erase(name, '\r');
    }
    std::erase(names, std::string());
    return names;
}

} // namespace veltrane::columns
