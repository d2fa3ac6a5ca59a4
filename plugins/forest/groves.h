#ifndef VELTRANE_PLUGINS_FOREST_GROVES_H
#define VELTRANE_PLUGINS_FOREST_GROVES_H

#include "crown.h"
#include "row_sets.h"
#include "sketch.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_forest {

/// The crowns of a forest, some at a time: all questions of a grove are asked of all rows of a block at once, feature
/// by feature, and their answers part the rows tree by tree. No step depends on a jump, nor any on the one before.
class Groves {
public:
    /// Adds the crown of the next tree.
    /// @param pool of the sets that questions ask for, where there is one
    void Add(const Sketch& sketch, const Crown& crown, Sets sets, const std::vector<std::uint32_t>& pool);
    /// To be called when all are there.
    void Settle();

    bool IsWhole(std::size_t tree) const { return fTrees[tree].isWhole; }
    bool IsFirstOfGrove(std::size_t tree) const { return fGroves[fTrees[tree].grove].tree == tree; }
    /// How many sets of rows the trees of one grove have at most.
    std::size_t MostSets() const { return fMostSets; }

    /// Asks the questions of a tree's grove.
    /// @param marks of feature 0; those of the next one stand `stride` behind
    /// @param rows  kRowsOfSet at most
    /// @param sets  room for MostSets()
    void Ask(std::size_t tree, const RowVectors& vectors, const std::uint32_t* pool, const std::uint16_t* marks,
             std::size_t stride, std::size_t rows, RowSet* sets) const;
    /// Finds the exits of a tree's crown, once for what Ask() has answered.
    /// @param exits room for kRowsOfSet; by row, the set that it comes to
    void Part(std::size_t tree, const RowVectors& vectors, std::size_t rows, RowSet* sets, std::uint8_t* exits) const {
        const Tree& own = fTrees[tree];
        vectors.part(fFrom.data() + own.first, own.steps, rows, sets + own.set, exits);
    }

    std::size_t Bytes() const;

private:
    struct Tree {
        std::uint32_t first; ///< of its steps
        std::uint16_t steps;
        std::uint16_t set; ///< its first one, in the grove
        std::uint32_t grove;
        bool isWhole;
    };
    struct Grove {
        std::size_t tree; ///< the first one
        std::size_t run;
        std::size_t runs;
        std::size_t question; ///< the first one
    };
    /// A question of the grove that grows, and where its answer goes.
    struct Asked {
        std::uint32_t feature;
        QuestionKind kind;
        std::uint32_t question;
        std::uint16_t place;
    };

    static Asked AskedBy(const Question& question, Sets sets, const std::vector<std::uint32_t>& pool);
    void CloseGrove();

    std::vector<Grove> fGroves;
    std::vector<QuestionRun> fRuns;
    std::vector<std::uint32_t> fQuestions;
    std::vector<std::uint16_t> fPlaces; ///< of their answers, among the sets of the grove
    std::vector<std::uint8_t> fFrom;    ///< by step, the set that it parts, in its tree
    std::vector<Tree> fTrees;
    std::size_t fMostSets = 0;

    std::vector<Asked> fAsked; ///< of the grove that grows
    std::size_t fSets = 0;     ///< of it
    std::size_t fFirst = 0;    ///< its first tree
};

} // namespace veltrane_forest

#endif
