#include "kit/values/frame.h"

namespace veltrane_kit {

namespace {

const std::deque<OwnedValue> kNothing;

} // namespace

bool AreSameOrMissing(const Value& left, const Value& right) {
    return left.isMissing || right.isMissing ? left.isMissing == right.isMissing : AreEqual(left, right);
}

void OwnedValue::Keep(const Value& from) {
    text.assign(from.text);
    value = from;
    value.text = text;
}

Frame::Frame(const FrameLayout& layout)
    : fLayout(layout), fFields(layout.fields), fTexts(layout.texts), fMemories(layout.memories),
      fHistories(layout.histories.size()) {}

bool Frame::IsSameBlock(const FrameLayout::History& layout, const History& history) const {
    for (std::size_t i = 0; i < layout.blocks.size(); ++i) {
        if (!AreSameOrMissing(Field(layout.blocks[i]), history.blocks[i].value)) {
            return false;
        }
    }
    return true;
}

const std::deque<OwnedValue>& Frame::Past(std::size_t history) const {
    const History& past = fHistories[history];
    const bool counts = !past.values.empty() && IsSameBlock(fLayout.histories[history], past);
    return counts ? past.values : kNothing;
}

void Frame::EndCase() {
    for (std::size_t i = 0; i < fHistories.size(); ++i) {
        EndCase(i);
    }
}

void Frame::EndCase(std::size_t place) {
    const FrameLayout::History& layout = fLayout.histories[place];
    History& history = fHistories[place];
    if (!history.values.empty() && !IsSameBlock(layout, history)) {
        history.values.clear();
    }
    OwnedValue kept;
    if (history.values.size() == layout.length) {
        kept = std::move(history.values.back());
        history.values.pop_back();
    }
    history.values.push_front(std::move(kept));
    history.values.front().Keep(Field(layout.field));
    history.blocks.resize(layout.blocks.size());
    for (std::size_t block = 0; block < layout.blocks.size(); ++block) {
        history.blocks[block].Keep(Field(layout.blocks[block]));
    }
}

} // namespace veltrane_kit
