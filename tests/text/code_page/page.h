#ifndef VELTRANE_TESTS_TEXT_CODE_PAGE_PAGE_H
#define VELTRANE_TESTS_TEXT_CODE_PAGE_PAGE_H

#include <cstddef>
#include <string>
#include <vector>

namespace veltrane::tests {

/// A code page: its locale, ICU's name of what the library converts by under that locale, and a few texts of it.
struct Page {
    int number;
    const char* locale;
    const char* converter;
    const char* wide;  ///< hexadecimal: a character of two bytes; its second byte is an ASCII letter or backslash
    const char* twin;  ///< hexadecimal: a character of two equal bytes
    const char* upper; ///< hexadecimal: a capital letter beyond ASCII
    const char* lower; ///< hexadecimal: the same in lower case

    bool IsDoubleByte() const { return wide != nullptr; }
};

const std::vector<Page>& Pages();

/// The one that this process is in, set before any test is made.
const Page& CurrentPage();

/// Puts the process into a code page.
/// @return whether its locale is there
bool EnterPage(const Page& page);

/// The rows of a table that belong to the current page, by their column `page`.
template <class Row, std::size_t n>
std::vector<Row> RowsOfPage(const Row (&rows)[n]) {
    std::vector<Row> result;
    for (const Row& row : rows) {
        if (row.page == CurrentPage().number) {
            result.push_back(row);
        }
    }
    return result;
}

} // namespace veltrane::tests

#endif
