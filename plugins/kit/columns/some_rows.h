#ifndef VELTRANE_PLUGINS_KIT_SOME_ROWS_H
#define VELTRANE_PLUGINS_KIT_SOME_ROWS_H

#include <veltrane/column_scorer.h>

#include <cstddef>
#include <vector>

namespace veltrane_kit {

/// Some rows of a column.
/// @param unreadable room for the cells among them that can't be read
inline veltrane::InputColumn RowsOf(const veltrane::InputColumn& column, std::size_t first, std::size_t rows,
                                    std::vector<veltrane::UnreadableCell>& unreadable) {
    veltrane::InputColumn some = column;
    some.numbers += column.numbers == nullptr ? 0 : first;
    some.texts += column.texts == nullptr ? 0 : first;
    some.codes += column.codes == nullptr ? 0 : first;
    unreadable.clear();
    for (std::size_t i = 0; i < column.unreadableCount; ++i) {
        const veltrane::UnreadableCell& cell = column.unreadable[i];
        if (cell.row >= first && cell.row < first + rows) {
            unreadable.push_back({cell.row - first, cell.text});
        }
    }
    some.unreadable = unreadable.data();
    some.unreadableCount = unreadable.size();
    return some;
}

} // namespace veltrane_kit

#endif
