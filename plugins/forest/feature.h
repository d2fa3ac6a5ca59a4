#ifndef VELTRANE_PLUGINS_FOREST_FEATURE_H
#define VELTRANE_PLUGINS_FOREST_FEATURE_H

#include "kit/columns/block.h"
#include "kit/inputs/case_view.h"
#include "row_sets.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace veltrane_forest {

/// What the conditions of a forest ask of one field: whatever a case has there becomes a small number once, its mark,
/// by which all nodes decide. The marks of
///
/// - RANK are the places of numbers between the cuts, the bounds of all comparisons with the field: as many cuts as lie
///   below the number,
/// - MEMBER are the places of numbers among those of all sets, and one for all other numbers,
/// - CODE are the codes of categories, and one for all that no condition mentions,
/// - PRESENCE is 0,
///
/// and one for a missing value. A case with a value that the nodes of some tree decide neither way isn't plain: it has
/// no mark and goes tree by tree.
class Feature {
public:
    enum class Kind : std::uint8_t { RANK, MEMBER, CODE, PRESENCE };

    /// What a set of up to 32 marks holds: a bit for each, the highest one for a missing value.
    static constexpr std::uint32_t kMostBits = 32;

    Feature(int slot, Kind kind) : fSlot(slot), fKind(kind) {}

    int Slot() const { return fSlot; }
    Kind GetKind() const { return fKind; }

    /// The cuts or members, or none.
    const std::vector<double>& Bounds() const { return fBounds; }
    /// How many marks there are beside that of a missing value.
    std::uint32_t Marks() const { return fMarks; }
    /// The mark of a value that is none of those that conditions mention, of a MEMBER or a CODE.
    std::uint32_t Other() const { return fMarks - 1; }
    std::uint32_t Missing() const { return fMissing; }
    /// Whether sets of marks are told by bits in a node; else they stand in a pool.
    bool HasFewMarks() const { return fMissing < kMostBits; }

    // While conditions are read.

    /// Takes a bound into account: see Settle(). Most come twice in a row, from the two children of a node.
    void AddBound(double bound) {
        if (fBounds.empty() || fBounds.back() != bound) {
            fBounds.push_back(bound);
        }
    }
    void AddCode(int code) {
        if (code >= 0 && static_cast<std::uint32_t>(code) >= fMarks) {
            fMarks = static_cast<std::uint32_t>(code) + 1;
        }
    }
    /// Sorts what was added and gives each its mark.
    /// @param most the highest number that a mark may be
    /// @return false where there are more marks than that
    bool Settle(std::uint32_t most);

    /// The place of a cut or member.
    std::uint32_t PlaceOf(double bound) const;

    void RefuseMissing() { fRefusesMissing = true; }
    void RefuseOther() { fRefusesOther = true; }

    // For each case.

    static constexpr std::size_t kRankedAtOnce = 8;

    /// How many cuts of as many features lie below as many numbers, all at once.
    /// @param features of the kind RANK, each with a cut
    static void RankNumbers(const Feature* const* features, const double* numbers, std::uint32_t* ranks);

    bool RefusesMissing() const { return fRefusesMissing; }

    /// @return none for a case that isn't plain
    template <typename View>
    std::optional<std::uint32_t> MarkIn(const View& fields) const;

    /// The marks of the rows of a block.
    /// @param marks   by row, with room for a multiple of 64 rows
    /// @param unplain set to 1 for rows that aren't plain, else left alone
    /// @param vectors that the processor has, or null
    template <typename Mark>
    void MarkRows(const veltrane_kit::Block& block, Mark* marks, std::uint8_t* unplain,
                  const RowVectors* vectors) const;

    std::size_t Bytes() const { return fBounds.capacity() * sizeof(double); }

private:
    std::uint32_t MarkOf(double number) const;
    std::uint32_t MarkOfCode(int code) const {
        return code >= 0 && static_cast<std::uint32_t>(code) < Other() ? static_cast<std::uint32_t>(code) : Other();
    }
    bool Refuses(std::uint32_t mark) const {
        return (fRefusesMissing && mark == fMissing) ||
               (fRefusesOther && mark == Other() && (fKind == Kind::CODE || fKind == Kind::MEMBER));
    }
    template <typename Mark>
    void RankRows(const double* numbers, std::size_t rows, Mark* marks, std::uint8_t* unplain,
                  const RowVectors* vectors) const;

    int fSlot;
    Kind fKind;
    bool fRefusesMissing = false;
    bool fRefusesOther = false;
    std::uint32_t fMarks = 0;
    std::uint32_t fMissing = 0;
    std::vector<double> fBounds;
};

template <typename View>
std::optional<std::uint32_t> Feature::MarkIn(const View& fields) const {
    if (fields.IsMissing(fSlot)) {
        return fRefusesMissing ? std::nullopt : std::optional(fMissing);
    }
    if (fKind == Kind::PRESENCE) {
        return 0;
    }
    std::uint32_t mark = 0;
    if (fKind == Kind::CODE) {
        mark = MarkOfCode(fields.Category(fSlot));
    } else {
        const double number = fields.Number(fSlot);
        if (std::isnan(number)) {
            return std::nullopt;
        }
        mark = MarkOf(number);
    }
    return Refuses(mark) ? std::nullopt : std::optional(mark);
}

} // namespace veltrane_forest

#endif
