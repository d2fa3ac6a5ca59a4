#include "data/sets/sorted_numbers.h"

#include <algorithm>

namespace veltrane::data {

namespace {

/// A full block is split in two.
constexpr std::size_t kFull = 1024;

bool EndsBelow(const std::vector<double>& block, double number) {
    return block.back() < number;
}
bool EndsUpTo(const std::vector<double>& block, double number) {
    return block.back() <= number;
}

} // namespace

void SortedNumbers::Add(double number) {
    if (fBlocks.empty()) {
        fBlocks.emplace_back();
    }
    auto block = std::lower_bound(fBlocks.begin(), std::prev(fBlocks.end()), number, EndsBelow);
    block->insert(std::upper_bound(block->begin(), block->end(), number), number);
    if (block->size() == kFull) {
        Block upper(block->begin() + kFull / 2, block->end());
        block->resize(kFull / 2);
        fBlocks.insert(std::next(block), std::move(upper));
    }
    Renumber();
}

void SortedNumbers::Remove(double number) {
    const auto block = std::lower_bound(fBlocks.begin(), fBlocks.end(), number, EndsBelow);
    if (block == fBlocks.end()) {
        return;
    }
    const auto found = std::lower_bound(block->begin(), block->end(), number);
    if (*found != number) {
        return;
    }
    block->erase(found);
    if (block->empty()) {
        fBlocks.erase(block);
    }
    Renumber();
}

std::size_t SortedNumbers::CountBelow(double number) const {
    const auto block = std::lower_bound(fBlocks.begin(), fBlocks.end(), number, EndsBelow);
    if (block == fBlocks.end()) {
        return fBefore.empty() ? 0 : fBefore.back() + fBlocks.back().size();
    }
    return fBefore[block - fBlocks.begin()] + (std::lower_bound(block->begin(), block->end(), number) - block->begin());
}

std::size_t SortedNumbers::CountUpTo(double number) const {
    const auto block = std::lower_bound(fBlocks.begin(), fBlocks.end(), number, EndsUpTo);
    if (block == fBlocks.end()) {
        return fBefore.empty() ? 0 : fBefore.back() + fBlocks.back().size();
    }
    return fBefore[block - fBlocks.begin()] + (std::upper_bound(block->begin(), block->end(), number) - block->begin());
}

void SortedNumbers::Renumber() {
    fBefore.resize(fBlocks.size());
    std::size_t before = 0;
    for (std::size_t i = 0; i < fBlocks.size(); ++i) {
        fBefore[i] = before;
        before += fBlocks[i].size();
    }
}

} // namespace veltrane::data
