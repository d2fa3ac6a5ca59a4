#include "run/table.h"

#include "files/encoding.h"
#include "run/report.h"

#include <algorithm>

namespace veltrane::host {
namespace {

constexpr std::size_t kGap = 2;

void Pad(std::string& line, std::size_t from, int columns) {
    const int missing = columns - TextColumns(std::string_view(line).substr(from));
    line.append(static_cast<std::size_t>(std::max(missing, 0)), ' ');
}

} // namespace

void Table::AddRow(std::vector<std::string> cells) {
    cells.resize(fHeadings.size());
    for (std::string& cell : cells) {
        cell = Escaped(cell);
    }
    fRows.push_back(std::move(cells));
}

std::string Table::Text() const {
    std::vector<int> widths;
    for (std::size_t column = 0; column < fHeadings.size(); ++column) {
        widths.push_back(TextColumns(fHeadings[column]));
        for (const auto& row : fRows) {
            widths.back() = std::max(widths.back(), TextColumns(row[column]));
        }
    }
    std::string text;
    const auto addLine = [&](auto&& cellOf) {
        std::string line;
        for (std::size_t column = 0; column < widths.size(); ++column) {
            const std::size_t from = line.size();
            line += cellOf(column);
            Pad(line, from, widths[column]);
            line.append(kGap, ' ');
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    };
    addLine([&](std::size_t column) { return fHeadings[column]; });
    addLine([&](std::size_t column) { return std::string(static_cast<std::size_t>(widths[column]), '-'); });
    for (const auto& row : fRows) {
        addLine([&](std::size_t column) { return row[column]; });
    }
    return text;
}

} // namespace veltrane::host
