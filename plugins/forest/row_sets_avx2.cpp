// Sets of rows by AVX2: 16 marks are compared at once, and the answers of 32 rows become a mask of 32 bits.
#include "row_sets.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include <cstring>

namespace veltrane_forest {

#if defined(__x86_64__)

namespace {

#define VELTRANE_FOREST_AVX2 __attribute__((target("avx2")))

/// Rows whose answers make one mask: two vectors of marks, one of bytes.
constexpr std::size_t kRowsOfMask = 32;
constexpr std::size_t kLanes = 16;

/// A question in vectors.
struct Asked {
    __m256i first;
    __m256i second;
};

template <QuestionKind kKind>
VELTRANE_FOREST_AVX2 inline Asked Prepare(std::uint32_t question) {
    if constexpr (kKind == QuestionKind::BITS) {
        return {_mm256_set1_epi32(static_cast<int>(question)), _mm256_setzero_si256()};
    } else {
        return {_mm256_set1_epi16(static_cast<short>(question)),
                _mm256_set1_epi16(static_cast<short>(question >> 16U))};
    }
}

/// All bits in the lanes of rows that say yes.
template <QuestionKind kKind>
VELTRANE_FOREST_AVX2 inline __m256i Answer(__m256i marks, const Asked& asked) {
    if constexpr (kKind == QuestionKind::BITS) {
        // The byte of a mark among the four of the set, and its bit there; the upper half of a lane has neither.
        const __m256i none = _mm256_set1_epi16(static_cast<short>(0x8000));
        const __m256i bits = _mm256_set1_epi64x(static_cast<long long>(0x8040201008040201ULL));
        const __m256i byte = _mm256_shuffle_epi8(asked.first, _mm256_or_si256(_mm256_srli_epi16(marks, 3), none));
        const __m256i place = _mm256_or_si256(_mm256_and_si256(marks, _mm256_set1_epi16(7)), none);
        const __m256i bit = _mm256_shuffle_epi8(bits, place);
        return _mm256_cmpeq_epi16(_mm256_and_si256(byte, bit), bit);
    } else {
        const __m256i above = kKind == QuestionKind::ORDER ? marks : _mm256_sub_epi16(marks, asked.first);
        return _mm256_cmpeq_epi16(_mm256_min_epu16(above, asked.second), above);
    }
}

template <QuestionKind kKind>
VELTRANE_FOREST_AVX2 void AskRows(const QuestionRun& run, const std::uint32_t* questions, const std::uint16_t* places,
                                  const std::uint16_t* marks, std::size_t rows, RowSet* sets) {
    const std::size_t masks = (rows + kRowsOfMask - 1) / kRowsOfMask;
    for (std::size_t q = 0; q < run.count; ++q) {
        const Asked asked = Prepare<kKind>(questions[q]);
        auto* const bytes = reinterpret_cast<char*>(sets[places[q]].words);
        for (std::size_t i = 0; i < masks; ++i) {
            const std::uint16_t* const own = marks + i * kRowsOfMask;
            const __m256i low = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(own));
            const __m256i high = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(own + kLanes));
            const __m256i packed = _mm256_packs_epi16(Answer<kKind>(low, asked), Answer<kKind>(high, asked));
            // The halves of the two vectors take turns in what was packed.
            const int mask = _mm256_movemask_epi8(_mm256_permute4x64_epi64(packed, 0xD8));
            std::memcpy(bytes + i * sizeof(mask), &mask, sizeof(mask));
        }
    }
}

void Ask(const QuestionRun& run, const std::uint32_t* questions, const std::uint16_t* places,
         const std::uint16_t* marks, std::size_t rows, RowSet* sets) {
    if (run.kind == QuestionKind::ORDER) {
        AskRows<QuestionKind::ORDER>(run, questions, places, marks, rows, sets);
    } else if (run.kind == QuestionKind::RANGE) {
        AskRows<QuestionKind::RANGE>(run, questions, places, marks, rows, sets);
    } else {
        AskRows<QuestionKind::BITS>(run, questions, places, marks, rows, sets);
    }
}

VELTRANE_FOREST_AVX2 void PartSets(const std::uint8_t* from, std::size_t steps, RowSet* sets) {
    const auto at = [sets](std::size_t set) { return reinterpret_cast<__m256i*>(sets[set].words); };
    _mm256_store_si256(at(0), _mm256_set1_epi8(-1));
    for (std::size_t i = 0; i < steps; ++i) {
        const __m256i all = _mm256_load_si256(at(from[i]));
        const __m256i yes = _mm256_load_si256(at(i + 1));
        _mm256_store_si256(at(from[i]), _mm256_andnot_si256(yes, all));
        _mm256_store_si256(at(i + 1), _mm256_and_si256(yes, all));
    }
}

VELTRANE_FOREST_AVX2 void Part(const std::uint8_t* from, std::size_t steps, std::size_t rows, RowSet* sets,
                               std::uint8_t* exits) {
    PartSets(from, steps, sets);
    // Each byte of a mask to the lanes of its eight rows, and the bit of each lane there.
    const __m256i spread = _mm256_setr_epi64x(0, 0x0101010101010101LL, 0x0202020202020202LL, 0x0303030303030303LL);
    const __m256i bits = _mm256_set1_epi64x(static_cast<long long>(0x8040201008040201ULL));
    const __m256i one = _mm256_set1_epi8(1);
    for (std::size_t first = 0; first < rows; first += kRowsOfMask) {
        __m256i found = _mm256_setzero_si256();
        __m256i exit = one;
        for (std::size_t i = 1; i <= steps; ++i) {
            int mask = 0;
            std::memcpy(&mask, reinterpret_cast<const char*>(sets[i].words) + first / 8, sizeof(mask));
            const __m256i lanes = _mm256_and_si256(_mm256_shuffle_epi8(_mm256_set1_epi32(mask), spread), bits);
            found = _mm256_or_si256(found, _mm256_and_si256(_mm256_cmpeq_epi8(lanes, bits), exit));
            exit = _mm256_add_epi8(exit, one);
        }
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(exits + first), found);
    }
}

#undef VELTRANE_FOREST_AVX2

} // namespace

const RowVectors* RowVectorsOfAvx2() {
    static constexpr RowVectors kVectors{Ask, Part, nullptr};
    static const bool hasVectors = __builtin_cpu_supports("avx2") != 0;
    return hasVectors ? &kVectors : nullptr;
}

#else

const RowVectors* RowVectorsOfAvx2() {
    return nullptr;
}

#endif

} // namespace veltrane_forest
