#ifndef VELTRANE_HOST_FORMULA_PARTS_H
#define VELTRANE_HOST_FORMULA_PARTS_H

#include "documents/xml_tree.h"

#include <cstddef>
#include <string>

namespace veltrane::host {

/// Entries of a table in a formula, one behind the other, cut where there are many.
class Entries {
public:
    /// Whether the next entry is among those that are shown; what isn't need not be written.
    bool IsShown() const;

    void Add(const std::string& entry);
    void AddUnshown() { ++fCount; }

    std::string Text() const;

private:
    std::string fText;
    std::size_t fCount = 0;
};

/// The cell of a row, by the name of its column, which may have a prefix in the table; null for none.
const XmlNode* CellOf(const XmlNode& row, const std::string& column);

/// Whether an attribute says that something is so.
bool IsTrue(const std::string& flag);

} // namespace veltrane::host

#endif
