#ifndef VELTRANE_PLUGINS_VECTORS_VECTORS_H
#define VELTRANE_PLUGINS_VECTORS_VECTORS_H

#include "kernel.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_vectors {

/// The vectors of a document, and their sums with a case. Vectors with few entries among a great many fields are kept
/// as these alone, the others number by number.
class Vectors {
public:
    /// How many cases are taken at once.
    static constexpr std::size_t kRows = 16;

    /// So many numbers may be kept for vectors that the document writes with fewer.
    static constexpr std::size_t kMostNumbers = std::size_t{1} << 22U;

    /// A number of a vector, by its place among the fields from 0.
    struct Entry {
        std::uint32_t field;
        double number;
    };

    explicit Vectors(std::size_t fields) : fFields(fields) {}

    /// Adds a vector.
    /// @param entries by field, ascending
    /// @param rest    what all other fields have
    void Add(const std::vector<Entry>& entries, double rest);

    /// To be called behind the last one.
    /// @return whether there is room: numbers other than 0 for all other fields take as much as they count
    bool Settle();

    std::size_t Fields() const { return fFields; }
    std::size_t Count() const { return fFirst.size(); }
    bool AreWhole() const { return !fWhole.empty() || fFields == 0; }

    /// What one case needs for all vectors.
    struct Prepared {
        std::vector<double> squares; ///< of the case, as sums over ever more fields
    };

    /// To be called for each case, ahead of the sums.
    void Prepare(const Kernel& kernel, const double* x, Prepared& prepared) const;

    /// The sum that a kernel takes, in the order of the fields.
    double Sum(const Kernel& kernel, std::size_t vector, const double* x, const Prepared& prepared) const;

    /// The same for kRows cases, of vectors that are whole.
    /// @param x kRows numbers for each field
    void SumRows(const Kernel& kernel, std::size_t vector, const double* x, double* sums) const;

private:
    double SumOfEntries(const Kernel& kernel, std::size_t vector, const double* x, const Prepared& prepared) const;
    double SquaresBetween(std::size_t from, std::size_t to, const Prepared& prepared) const;
    bool SpreadRests();

    std::size_t fFields;
    std::vector<Entry> fEntries;
    std::vector<std::size_t> fFirst; ///< by vector, of its entries
    std::vector<double> fRests;      ///< by vector
    std::vector<double> fWhole;      ///< all numbers, vector by vector
};

} // namespace veltrane_vectors

#endif
