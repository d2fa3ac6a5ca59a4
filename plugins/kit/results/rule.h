#ifndef VELTRANE_PLUGINS_KIT_RULE_H
#define VELTRANE_PLUGINS_KIT_RULE_H

#include "kit/results/prediction.h"

#include <string>

namespace veltrane_kit {

/// A rule of a model, as output fields tell of it.
struct Rule {
    const Rule* outer = nullptr; ///< what it stands in, a condition alone; null for none. Borrowed.
    std::string condition;       ///< its own, as people write it
    std::string id;              ///< its place in the document, from 1, where it has none
    std::string consequent;      ///< what it predicts
    double confidence = Prediction::kNone;
    double support = Prediction::kNone; ///< the share of all records for which it is right

    /// All that has to hold, the outermost condition first.
    std::string Antecedent() const {
        std::string text;
        AppendTo(text);
        return text;
    }

private:
    /// Rules stand within each other at most as deep as the factory lets a document nest.
    void AppendTo(std::string& text) const {
        if (outer != nullptr) {
            outer->AppendTo(text);
            text += " and ";
        }
        text += condition;
    }
};

} // namespace veltrane_kit

#endif
