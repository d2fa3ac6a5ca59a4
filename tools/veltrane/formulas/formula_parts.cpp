#include "formulas/formula_parts.h"

#include <fmt/format.h>

namespace veltrane::host {
namespace {

constexpr std::size_t kShownEntries = 6;

} // namespace

bool Entries::IsShown() const {
    return fCount < kShownEntries;
}

void Entries::Add(const std::string& entry) {
    if (IsShown()) {
        fText += (fText.empty() ? "" : ", ") + entry;
    }
    ++fCount;
}

std::string Entries::Text() const {
    return fCount <= kShownEntries ? fText : fmt::format("{}, ... ({})", fText, fCount);
}

const XmlNode* CellOf(const XmlNode& row, const std::string& column) {
    for (const XmlNode& cell : row.children) {
        if (cell.name == column || cell.name.ends_with(":" + column)) {
            return &cell;
        }
    }
    return nullptr;
}

bool IsTrue(const std::string& flag) {
    return flag == "true" || flag == "1";
}

} // namespace veltrane::host
