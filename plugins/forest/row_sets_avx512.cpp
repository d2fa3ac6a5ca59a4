// Sets of rows by AVX-512: 32 marks are compared at once, and the answer is a mask of 32 bits.
#include "row_sets.h"

#if defined(__x86_64__)
#if defined(__GNUC__) && !defined(__clang__)
// GCC's own intrinsics begin with a vector that isn't set, all of whose lanes they write.
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <immintrin.h>
#endif

namespace veltrane_forest {

#if defined(__x86_64__)

namespace {

#define VELTRANE_FOREST_AVX512 __attribute__((target("avx512f,avx512bw,avx512vl,avx512dq")))

constexpr std::size_t kLanes = 32;
constexpr std::size_t kVectorsOfWord = kRowsOfWord / kLanes;

/// The answers of 32 rows to one question.
template <QuestionKind kKind>
VELTRANE_FOREST_AVX512 inline __mmask32 Answer(__m512i marks, __m512i first, __m512i second) {
    if constexpr (kKind == QuestionKind::ORDER) {
        return _mm512_cmple_epu16_mask(marks, second);
    } else if constexpr (kKind == QuestionKind::RANGE) {
        return _mm512_cmple_epu16_mask(_mm512_sub_epi16(marks, first), second);
    } else {
        // A lane for each of the 32 marks, which those of the rows choose from.
        return _mm512_movepi16_mask(_mm512_permutexvar_epi16(marks, first));
    }
}

template <QuestionKind kKind, std::size_t kWords>
VELTRANE_FOREST_AVX512 void AskWords(std::size_t count, const std::uint32_t* questions, const std::uint16_t* places,
                                     const std::uint16_t* marks, RowSet* sets) {
    constexpr std::size_t kVectors = kWords * kVectorsOfWord;
    __m512i own[kVectors];
    for (std::size_t i = 0; i < kVectors; ++i) {
        own[i] = _mm512_loadu_si512(marks + i * kLanes);
    }
    for (std::size_t q = 0; q < count; ++q) {
        const std::uint32_t question = questions[q];
        __m512i first = _mm512_setzero_si512();
        __m512i second = first;
        if constexpr (kKind == QuestionKind::BITS) {
            first = _mm512_movm_epi16(question);
        } else {
            first = _mm512_set1_epi16(static_cast<short>(question));
            second = _mm512_set1_epi16(static_cast<short>(question >> 16U));
        }
        std::uint64_t* const words = sets[places[q]].words;
        for (std::size_t i = 0; i < kWords; ++i) {
            const __mmask32 low = Answer<kKind>(own[2 * i], first, second);
            const __mmask32 high = Answer<kKind>(own[2 * i + 1], first, second);
            words[i] = _mm512_kunpackd(high, low);
        }
    }
}

template <QuestionKind kKind>
void AskRows(const QuestionRun& run, const std::uint32_t* questions, const std::uint16_t* places,
             const std::uint16_t* marks, std::size_t rows, RowSet* sets) {
    switch ((rows + kRowsOfWord - 1) / kRowsOfWord) {
    case 1:
        AskWords<kKind, 1>(run.count, questions, places, marks, sets);
        break;
    case 2:
        AskWords<kKind, 2>(run.count, questions, places, marks, sets);
        break;
    case 3:
        AskWords<kKind, 3>(run.count, questions, places, marks, sets);
        break;
    default:
        AskWords<kKind, 4>(run.count, questions, places, marks, sets);
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

VELTRANE_FOREST_AVX512 void Part(const std::uint8_t* from, std::size_t steps, std::size_t /*rows*/, RowSet* sets,
                                 std::uint8_t* exits) {
    const auto at = [sets](std::size_t set) { return reinterpret_cast<__m256i*>(sets[set].words); };
    _mm256_store_si256(at(0), _mm256_set1_epi8(-1));
    for (std::size_t i = 0; i < steps; ++i) {
        const __m256i all = _mm256_load_si256(at(from[i]));
        const __m256i yes = _mm256_load_si256(at(i + 1));
        _mm256_store_si256(at(from[i]), _mm256_andnot_si256(yes, all));
        _mm256_store_si256(at(i + 1), _mm256_and_si256(yes, all));
    }
    __m512i found[kWordsOfSet];
    for (__m512i& some : found) {
        some = _mm512_setzero_si512();
    }
    const __m512i one = _mm512_set1_epi8(1);
    __m512i exit = one;
    for (std::size_t i = 1; i <= steps; ++i) {
        for (std::size_t word = 0; word < kWordsOfSet; ++word) {
            found[word] = _mm512_mask_mov_epi8(found[word], sets[i].words[word], exit);
        }
        exit = _mm512_add_epi8(exit, one);
    }
    for (std::size_t word = 0; word < kWordsOfSet; ++word) {
        _mm512_storeu_si512(exits + word * kRowsOfWord, found[word]);
    }
}

constexpr std::size_t kNumbers = 8;       // of a vector
constexpr std::size_t kSearches = 4;      // vectors at once
constexpr std::size_t kLevelsByTable = 4; // of a search, whose cuts a vector has room for

/// The cuts that the first levels of a search compare with, by the answers so far.
struct FirstCuts {
    double cuts[kLevelsByTable][kNumbers] = {};

    FirstCuts(const double* all, std::size_t count) {
        std::size_t starts[kNumbers] = {};
        std::size_t left = count;
        for (std::size_t level = 0; level < kLevelsByTable && left > 1; ++level) {
            const std::size_t half = left / 2;
            const std::size_t ways = std::size_t{1} << level;
            for (std::size_t way = ways; way-- > 0;) {
                const std::size_t start = starts[way];
                cuts[level][way] = all[start + half - 1];
                if (2 * way + 1 < kNumbers) {
                    starts[2 * way] = start;
                    starts[2 * way + 1] = start + half;
                }
            }
            left -= half;
        }
    }
};

/// Each step takes half of what is left, as it does one by one.
VELTRANE_FOREST_AVX512 void Rank(const double* cuts, std::size_t count, const double* numbers, std::size_t rows,
                                 std::uint16_t missing, std::uint16_t* marks) {
    constexpr std::size_t kAtOnce = kNumbers * kSearches;
    const FirstCuts table(cuts, count);
    const __m512i one = _mm512_set1_epi64(1);
    for (std::size_t done = 0; done < rows; done += kAtOnce) {
        __m512d number[kSearches];
        __m512i at[kSearches];
        __m512i way[kSearches];
        for (std::size_t i = 0; i < kSearches; ++i) {
            const std::size_t first = done + i * kNumbers;
            const std::size_t left = first < rows ? rows - first : 0;
            const auto here = static_cast<__mmask8>(left < kNumbers ? (1U << left) - 1 : 0xFFU);
            number[i] = _mm512_maskz_loadu_pd(here, numbers + (here == 0 ? 0 : first));
            at[i] = _mm512_setzero_si512();
            way[i] = _mm512_setzero_si512();
        }
        std::size_t left = count;
        for (std::size_t level = 0; level < kLevelsByTable && left > 1; ++level) {
            const std::size_t half = left / 2;
            const __m512i step = _mm512_set1_epi64(static_cast<long long>(half));
            const __m512d ofLevel = _mm512_loadu_pd(table.cuts[level]);
            for (std::size_t i = 0; i < kSearches; ++i) {
                const __m512d cut = _mm512_permutexvar_pd(way[i], ofLevel);
                const __mmask8 isBelow = _mm512_cmp_pd_mask(cut, number[i], _CMP_LT_OQ);
                at[i] = _mm512_mask_add_epi64(at[i], isBelow, at[i], step);
                way[i] = _mm512_add_epi64(way[i], way[i]);
                way[i] = _mm512_mask_add_epi64(way[i], isBelow, way[i], one);
            }
            left -= half;
        }
        while (left > 0) {
            // The last step takes the one that is left.
            const std::size_t half = left > 1 ? left / 2 : 1;
            const __m512i step = _mm512_set1_epi64(static_cast<long long>(half));
            for (std::size_t i = 0; i < kSearches; ++i) {
                const __m512d cut = _mm512_i64gather_pd(at[i], cuts + half - 1, sizeof(double));
                const __mmask8 isBelow = _mm512_cmp_pd_mask(cut, number[i], _CMP_LT_OQ);
                at[i] = _mm512_mask_add_epi64(at[i], isBelow, at[i], step);
            }
            left -= half;
        }
        const __m512i none = _mm512_set1_epi64(missing);
        for (std::size_t i = 0; i < kSearches; ++i) {
            const __mmask8 isNone = _mm512_cmp_pd_mask(number[i], number[i], _CMP_UNORD_Q);
            const __m512i rank = _mm512_mask_mov_epi64(at[i], isNone, none);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(marks + done + i * kNumbers), _mm512_cvtepi64_epi16(rank));
        }
    }
}

#undef VELTRANE_FOREST_AVX512

} // namespace

const RowVectors* RowVectorsOfAvx512() {
    static constexpr RowVectors kVectors{Ask, Part, Rank};
    static const bool hasVectors = __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
                                   __builtin_cpu_supports("avx512vl") != 0 && __builtin_cpu_supports("avx512dq") != 0;
    return hasVectors ? &kVectors : nullptr;
}

#else

const RowVectors* RowVectorsOfAvx512() {
    return nullptr;
}

#endif

} // namespace veltrane_forest
