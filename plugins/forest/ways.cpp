// Sixteen ways at once by AVX-512: nodes are gathered, and so are marks, unless those of a case lie in one vector.
#include "ways.h"

#include <algorithm>

#if defined(__x86_64__)
#if defined(__GNUC__) && !defined(__clang__)
// GCC's own intrinsics begin with a vector that isn't set, all of whose lanes they write.
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <immintrin.h>
#endif

namespace veltrane_forest {

void Ways::Close() {
    std::fill_n(fIds.begin() + static_cast<std::ptrdiff_t>(fCount), kMore, ~std::uint32_t{0});
    std::fill_n(fStarts.begin() + static_cast<std::ptrdiff_t>(fCount), kMore, kRootOfTree);
}

void Ways::Tell(const Ends& ends, std::uint32_t* leaves) const {
    for (std::size_t i = 0; i < fCount; ++i) {
        leaves[ends.ids[i]] = ends.leaves[i];
    }
}

#if defined(__x86_64__)

namespace {

#define VELTRANE_FOREST_AVX512 __attribute__((target("avx512f,avx512bw,avx512vl,avx512dq,popcnt")))

constexpr std::size_t kLanes = 16;

/// The steps of one vector fill the time that those of another one wait for memory.
constexpr std::size_t kVectors = 2;

constexpr int kNodeBytes = 8;
static_assert(sizeof(SmallNode) == kNodeBytes);

/// Where marks are.
enum class Marks : std::uint8_t { OF_CASE_IN_VECTOR, OF_CASE, OF_ROWS };

/// What all ways of a call share.
struct Ground {
    const SmallNode* nodes;
    const std::uint32_t* ids;
    const std::uint32_t* starts;
    std::size_t count;
    const SmallNode::Mark* marks;
    unsigned shift; ///< of rows
    std::uint32_t* endedIds;
    std::uint32_t* endedLeaves;
};

/// The nodes that some ways have come to, each in two words as SmallNode has them.
struct Nodes {
    __m512i where;
    __m512i test;
};

VELTRANE_FOREST_AVX512 inline Nodes Gather(const SmallNode* nodes, __m512i at) {
    const __m256i lowAt = _mm512_extracti64x4_epi64(at, 0);
    const __m256i highAt = _mm512_extracti64x4_epi64(at, 1);
    const __m512i low = _mm512_i32gather_epi64(lowAt, nodes, kNodeBytes);
    const __m512i high = _mm512_i32gather_epi64(highAt, nodes, kNodeBytes);
    const __m512i first = _mm512_setr_epi32(0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    const __m512i second = _mm512_add_epi32(first, _mm512_set1_epi32(1));
    return {_mm512_permutex2var_epi32(low, first, high), _mm512_permutex2var_epi32(low, second, high)};
}

/// @param few the first marks of a case
template <Marks kMarks>
VELTRANE_FOREST_AVX512 inline __m512i MarksOf(const Ground& ground, __m512i feature, __m512i id, __m512i few) {
    if constexpr (kMarks == Marks::OF_CASE_IN_VECTOR) {
        // The upper half of a lane asks for mark 0, which is 0.
        return _mm512_permutexvar_epi16(feature, few);
    } else {
        __m512i place = feature;
        if constexpr (kMarks == Marks::OF_ROWS) {
            place = _mm512_sll_epi32(feature, _mm_cvtsi32_si128(static_cast<int>(ground.shift)));
            // A lane without a way has no row.
            place = _mm512_add_epi32(place, _mm512_max_epi32(id, _mm512_setzero_si512()));
        }
        const __m512i both = _mm512_i32gather_epi32(place, ground.marks, sizeof(SmallNode::Mark));
        return _mm512_and_si512(both, _mm512_set1_epi32(0xFFFF));
    }
}

/// The lanes that say yes, see Next().
template <Sets kSets>
VELTRANE_FOREST_AVX512 inline __mmask16 Answer(const Nodes& nodes, __m512i mark) {
    const __m512i above = _mm512_and_si512(_mm512_sub_epi32(mark, nodes.test), _mm512_set1_epi32(0xFFFF));
    const __mmask16 isInRange = _mm512_cmple_epu32_mask(above, _mm512_srli_epi32(nodes.test, 16));
    if constexpr (kSets == Sets::NONE) {
        return isInRange;
    } else {
        const __m512i place = _mm512_and_si512(mark, _mm512_set1_epi32(kMarksOfWord - 1));
        const __m512i bit = _mm512_sllv_epi32(_mm512_set1_epi32(1), place);
        const __mmask16 isSet = _mm512_test_epi32_mask(nodes.where, _mm512_set1_epi32(SmallNode::kMostFeatures));
        const __mmask16 isIn = _mm512_test_epi32_mask(nodes.test, bit);
        return static_cast<__mmask16>((isInRange & ~isSet) | (isIn & isSet));
    }
}

template <Sets kSets, Marks kMarks>
VELTRANE_FOREST_AVX512 void Go(const Ground& ground) {
    const bool isOfRows = kMarks == Marks::OF_ROWS;
    const __m512i few = kMarks == Marks::OF_CASE_IN_VECTOR ? _mm512_loadu_si512(ground.marks) : _mm512_setzero_si512();
    const __m512i one = _mm512_set1_epi32(1);
    const __m512i root = isOfRows ? _mm512_setzero_si512() : _mm512_set1_epi32(kRootOfTree);
    const __m512i noWay = _mm512_set1_epi32(-1);
    __m512i id[kVectors];
    __m512i at[kVectors];
    __m512i first[kVectors]; // the first node of a way's tree
    std::size_t next = 0;
    for (std::size_t i = 0; i < kVectors; ++i, next += kLanes) {
        id[i] = _mm512_loadu_si512(ground.ids + next);
        at[i] = _mm512_loadu_si512(ground.starts + next);
        first[i] = isOfRows ? root : _mm512_sub_epi32(at[i], root);
    }
    // Behind the last way stand kVectors vectors without one.
    const std::size_t last = ground.count + kLanes * (kVectors - 1);
    next = std::min(next, last);
    for (std::size_t ended = 0; ended < ground.count;) {
        for (std::size_t i = 0; i < kVectors; ++i) {
            const Nodes here = Gather(ground.nodes, at[i]);
            const __m512i feature = _mm512_and_si512(here.where, _mm512_set1_epi32(SmallNode::kMostFeatures - 1));
            const __mmask16 isYes = Answer<kSets>(here, MarksOf<kMarks>(ground, feature, id[i], few));
            at[i] = _mm512_add_epi32(first[i], _mm512_srli_epi32(here.where, 10));
            at[i] = _mm512_mask_add_epi32(at[i], isYes, at[i], one);
            const __mmask16 isLeaf =
                _mm512_mask_cmpneq_epi32_mask(_mm512_testn_epi32_mask(feature, feature), id[i], noWay);
            if (isLeaf == 0) {
                continue;
            }
            const __m512i leaf = _mm512_srli_epi32(here.test, 16);
            _mm512_storeu_si512(ground.endedIds + ended, _mm512_maskz_compress_epi32(isLeaf, id[i]));
            _mm512_storeu_si512(ground.endedLeaves + ended, _mm512_maskz_compress_epi32(isLeaf, leaf));
            id[i] = _mm512_mask_expand_epi32(id[i], isLeaf, _mm512_loadu_si512(ground.ids + next));
            at[i] = _mm512_mask_expand_epi32(at[i], isLeaf, _mm512_loadu_si512(ground.starts + next));
            first[i] = isOfRows ? root : _mm512_mask_sub_epi32(first[i], isLeaf, at[i], root);
            const auto count = static_cast<std::size_t>(__builtin_popcount(isLeaf));
            ended += count;
            next = std::min(next + count, last);
        }
    }
}

template <Marks kMarks>
void GoWithSets(const Ground& ground, Sets sets) {
    if (sets == Sets::NONE) {
        Go<Sets::NONE, kMarks>(ground);
    } else {
        Go<Sets::OF_BITS, kMarks>(ground);
    }
}

#undef VELTRANE_FOREST_AVX512

} // namespace

bool Ways::AreThere() {
    static const bool areThere = __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
                                 __builtin_cpu_supports("avx512vl") != 0 && __builtin_cpu_supports("avx512dq") != 0;
    return areThere;
}

void Ways::GoThroughTrees(const SmallNode* nodes, Sets sets, const SmallNode::Mark* marks, std::size_t count,
                          Ends& ends, std::uint32_t* leaves) const {
    ends.ids.resize(fCount + kLanes);
    ends.leaves.resize(fCount + kLanes);
    const Ground ground{nodes, fIds.data(), fStarts.data(), fCount, marks, 0, ends.ids.data(), ends.leaves.data()};
    if (count <= kMarksOfVector) {
        GoWithSets<Marks::OF_CASE_IN_VECTOR>(ground, sets);
    } else {
        GoWithSets<Marks::OF_CASE>(ground, sets);
    }
    Tell(ends, leaves);
}

void Ways::GoThroughTree(const SmallNode* nodes, Sets sets, const SmallNode::Mark* marks, unsigned shift, Ends& ends,
                         std::uint32_t* leaves) const {
    ends.ids.resize(fCount + kLanes);
    ends.leaves.resize(fCount + kLanes);
    GoWithSets<Marks::OF_ROWS>(
        {nodes, fIds.data(), fStarts.data(), fCount, marks, shift, ends.ids.data(), ends.leaves.data()}, sets);
    Tell(ends, leaves);
}

#else

bool Ways::AreThere() {
    return false;
}

void Ways::GoThroughTrees(const SmallNode*, Sets, const SmallNode::Mark*, std::size_t, Ends&, std::uint32_t*) const {}

void Ways::GoThroughTree(const SmallNode*, Sets, const SmallNode::Mark*, unsigned, Ends&, std::uint32_t*) const {}

#endif

} // namespace veltrane_forest
