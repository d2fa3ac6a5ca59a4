// The steps of Next() for eight rows in a vector of AVX2, two of them at a time: nodes and marks are gathered.
#include "vectors.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace veltrane_forest {

#if defined(__x86_64__)

namespace {

constexpr std::size_t kLanes = 8;
constexpr std::size_t kVectors = 2;

/// So many steps are gone before it is asked whether all are at a leaf.
constexpr std::uint32_t kStride = 4;

constexpr int kNodeBytes = 8;
static_assert(sizeof(SmallNode) == kNodeBytes);

/// @param bytes of the nodes of the tree
template <Sets kSets>
__attribute__((target("avx2"))) inline __m256i NextOfEight(const char* bytes, __m256i at, const int* marks,
                                                           __m128i shift) {
    const __m256i where = _mm256_i32gather_epi32(reinterpret_cast<const int*>(bytes), at, kNodeBytes);
    const __m256i test = _mm256_i32gather_epi32(reinterpret_cast<const int*>(bytes + 4), at, kNodeBytes);
    const __m256i feature = _mm256_and_si256(where, _mm256_set1_epi32(SmallNode::kMostFeatures - 1));
    const __m256i low = _mm256_set1_epi32(0xFFFF);
    const __m256i rows = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
    const __m256i place = _mm256_add_epi32(_mm256_sll_epi32(feature, shift), rows);
    const __m256i mark = _mm256_and_si256(_mm256_i32gather_epi32(marks, place, 2), low);
    const __m256i above = _mm256_and_si256(_mm256_sub_epi32(mark, test), low);
    // All bits for a no, as a number one less.
    __m256i no = _mm256_cmpgt_epi32(above, _mm256_srli_epi32(test, 16));
    if constexpr (kSets == Sets::OF_BITS) {
        const __m256i inWord = _mm256_and_si256(mark, _mm256_set1_epi32(kMarksOfWord - 1));
        const __m256i bit = _mm256_and_si256(_mm256_srlv_epi32(test, inWord), _mm256_set1_epi32(1));
        const __m256i isOut = _mm256_cmpeq_epi32(bit, _mm256_setzero_si256());
        const __m256i flag = _mm256_set1_epi32(SmallNode::kMostFeatures);
        no = _mm256_blendv_epi8(no, isOut, _mm256_cmpeq_epi32(_mm256_and_si256(where, flag), flag));
    }
    return _mm256_add_epi32(_mm256_add_epi32(_mm256_srli_epi32(where, 10), _mm256_set1_epi32(1)), no);
}

template <Sets kSets>
__attribute__((target("avx2"))) std::size_t Walk(const SmallNode* nodes, std::uint32_t depth,
                                                 const std::uint32_t* starts, const SmallNode::Mark* marks,
                                                 unsigned shift, std::size_t rows, std::uint32_t* leaves) {
    const char* const bytes = reinterpret_cast<const char*>(nodes);
    const __m128i ofFeature = _mm_cvtsi32_si128(static_cast<int>(shift));
    std::size_t done = 0;
    for (; done + kLanes * kVectors <= rows; done += kLanes * kVectors) {
        const int* first[kVectors];
        __m256i at[kVectors];
        for (std::size_t i = 0; i < kVectors; ++i) {
            first[i] = reinterpret_cast<const int*>(marks + done + i * kLanes);
            at[i] = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(starts + done + i * kLanes));
        }
        bool hasMoved = true;
        for (std::uint32_t steps = 0; steps < depth && hasMoved; steps += kStride) {
            __m256i moved = _mm256_setzero_si256();
            for (std::uint32_t step = 0; step < kStride; ++step) {
                moved = _mm256_setzero_si256();
                for (std::size_t i = 0; i < kVectors; ++i) {
                    const __m256i next = NextOfEight<kSets>(bytes, at[i], first[i], ofFeature);
                    moved = _mm256_or_si256(moved, _mm256_xor_si256(next, at[i]));
                    at[i] = next;
                }
            }
            hasMoved = _mm256_testz_si256(moved, moved) == 0;
        }
        for (std::size_t i = 0; i < kVectors; ++i) {
            const __m256i test = _mm256_i32gather_epi32(reinterpret_cast<const int*>(bytes + 4), at[i], kNodeBytes);
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(leaves + done + i * kLanes), _mm256_srli_epi32(test, 16));
        }
    }
    return done;
}

} // namespace

bool HasVectors() {
    static const bool hasVectors = __builtin_cpu_supports("avx2") != 0;
    return hasVectors;
}

std::size_t WalkVectors(const SmallNode* nodes, std::uint32_t depth, Sets sets, const std::uint32_t* starts,
                        const SmallNode::Mark* marks, unsigned shift, std::size_t rows, std::uint32_t* leaves) {
    return sets == Sets::NONE ? Walk<Sets::NONE>(nodes, depth, starts, marks, shift, rows, leaves)
                              : Walk<Sets::OF_BITS>(nodes, depth, starts, marks, shift, rows, leaves);
}

#else

bool HasVectors() {
    return false;
}

std::size_t WalkVectors(const SmallNode*, std::uint32_t, Sets, const std::uint32_t*, const SmallNode::Mark*, unsigned,
                        std::size_t, std::uint32_t*) {
    return 0;
}

#endif

} // namespace veltrane_forest
