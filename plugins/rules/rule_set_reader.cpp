#include "rule_set_reader.h"

#include "kit/conditions/condition_text.h"
#include "kit/document/raise.h"

#include <cmath>
#include <utility>

namespace veltrane_rules {

using veltrane_kit::ConditionReader;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Narrow;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;
using veltrane_kit::Rule;
using veltrane_kit::Word;

namespace {

constexpr const XMLCh* kRecordCount = u"recordCount";
constexpr const XMLCh* kCorrect = u"nbCorrect";
constexpr const XMLCh* kConfidence = u"confidence";
constexpr const XMLCh* kDefaultConfidence = u"defaultConfidence";

constexpr Word<Criterion> kCriteria[] = {
    {u"firstHit", Criterion::FIRST_HIT},
    {u"weightedMax", Criterion::WEIGHTED_MAX},
    {u"weightedSum", Criterion::WEIGHTED_SUM},
};

/// A number that must not be negative.
double ReadCount(const Element& element, const XMLCh* name, double fallback) {
    const double number = element.NumberOr(name, fallback);
    if (element.Has(name) && number < 0.0) {
        element.RaiseInvalid(name);
    }
    return number;
}

double ReadFraction(const Element& element, const XMLCh* name) {
    const double number = ReadCount(element, name, Prediction::kNone);
    if (number > 1.0) {
        element.RaiseInvalid(name);
    }
    return number;
}

/// How many records there are, and for how many of them the prediction is right.
std::pair<double, double> ReadRecords(const Element& element) {
    const double records = ReadCount(element, kRecordCount, Prediction::kNone);
    const double correct = ReadCount(element, kCorrect, Prediction::kNone);
    if (element.Has(kRecordCount) && correct > records) {
        Raise<Message::VALUE_ABOVE_OTHER>(element.Text(kCorrect), Narrow(kCorrect), element.Text(kRecordCount),
                                          Narrow(kRecordCount), element.Tag());
    }
    return {records, correct};
}

bool IsRule(const Element& element) {
    return element.Is(u"SimpleRule") || element.Is(u"CompoundRule");
}

} // namespace

void RuleSetReader::Read(const Element& ruleSet) {
    Element method;
    for (const Element child : ruleSet.Children()) {
        if (child.Is(u"RuleSelectionMethod")) {
            const Criterion criterion = child.OneOf(u"criterion", kCriteria);
            fRules.criterion = method ? fRules.criterion : criterion; // the first is the default
            method = child;
        } else if (!IsRule(child) && !child.Is(u"ScoreDistribution") && !child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    if (!method) {
        Raise<Message::MISSING_NODE_IN>("RuleSelectionMethod", ruleSet.Tag());
    }
    fRecords = ReadRecords(ruleSet).first;
    ReadDefault(ruleSet);
    fRules.distribution = ReadDistribution(ruleSet);
    ReadRules(ruleSet, nullptr);
}

void RuleSetReader::ReadDefault(const Element& element) {
    const double confidence = ReadCount(element, kDefaultConfidence, Prediction::kNone);
    if (element.Has(u"defaultScore")) {
        fRules.otherwise = {ReadScore(element, u"defaultScore"), confidence};
    }
}

/// Rules nest at most as deep as the factory lets a document nest.
void RuleSetReader::ReadRules(const Element& parent, const Rule* outer) {
    for (const Element child : parent.Children()) {
        if (child.Is(u"SimpleRule")) {
            ReadSimple(child, outer);
        } else if (child.Is(u"CompoundRule")) {
            ReadCompound(child, outer);
        }
    }
}

/// Adds the step and what is told of it.
/// @return the place of the step
std::size_t RuleSetReader::ReadCondition(const Element& element, const Rule* outer) {
    const Element predicate = ConditionReader::RequirePredicate(element);
    Step step;
    step.condition = fConditions.Read(predicate);
    fRules.steps.push_back(step);
    Rule& rule = fRules.told.emplace_back();
    rule.outer = outer;
    rule.condition = veltrane_kit::ConditionText(predicate);
    return fRules.steps.size() - 1;
}

void RuleSetReader::ReadCompound(const Element& element, const Rule* outer) {
    bool hasRule = false;
    for (const Element child : element.Children()) {
        hasRule = hasRule || IsRule(child);
        if (!IsRule(child) && !ConditionReader::IsPredicate(child) && !child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    if (!hasRule) {
        Raise<Message::MISSING_NODE_IN>("rule", element.Tag());
    }
    const std::size_t step = ReadCondition(element, outer);
    ReadRules(element, &fRules.told.back());
    fRules.steps[step].next = static_cast<std::int32_t>(fRules.steps.size());
}

void RuleSetReader::ReadSimple(const Element& element, const Rule* outer) {
    for (const Element child : element.Children()) {
        if (!ConditionReader::IsPredicate(child) && !child.Is(u"ScoreDistribution") && !child.Is(u"Extension")) {
            child.RaiseMisplaced();
        }
    }
    const std::size_t at = ReadCondition(element, outer);
    Step& step = fRules.steps[at];
    step.next = static_cast<std::int32_t>(at) + 1;
    step.rule = static_cast<std::int32_t>(fRules.rules.size());
    RuleScore score;
    score.score = ReadScore(element, u"score");
    score.weight = element.NumberOr(u"weight", 1.0);
    score.confidence = ReadCount(element, kConfidence, 1.0);
    score.distribution = ReadDistribution(element);
    Rule& rule = fRules.told.back();
    rule.consequent = element.AnyText(u"score");
    rule.confidence = score.confidence;
    const double correct = ReadRecords(element).second;
    if (correct != Prediction::kNone && fRecords > 0.0) {
        rule.support = correct / fRecords;
    }
    ReadId(element, rule);
    score.rule = &rule;
    fRules.rules.push_back(score);
}

void RuleSetReader::ReadId(const Element& element, Rule& rule) {
    if (!element.Has(u"id")) {
        rule.id = std::to_string(fRules.rules.size() + 1);
        return;
    }
    rule.id = element.Text(u"id");
    if (!fIds.insert(rule.id).second) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), rule.id, "RuleSet");
    }
}

std::int32_t RuleSetReader::ReadScore(const Element& element, const XMLCh* attribute) {
    if (fParts.IsClassification()) {
        return fParts.target->CategoryOf(element, attribute);
    }
    const double number = element.Number(attribute);
    const auto [found, isNew] = fNumbers.emplace(number, static_cast<std::int32_t>(fRules.numbers.size()));
    if (isNew) {
        fRules.numbers.push_back(number);
    }
    return found->second;
}

Distribution RuleSetReader::ReadDistribution(const Element& parent) {
    Distribution distribution;
    distribution.first = static_cast<std::int32_t>(fRules.shares.size());
    std::set<std::int32_t> known;
    Element last;
    for (const Element child : parent.Children()) {
        if (!child.Is(u"ScoreDistribution")) {
            continue;
        }
        if (!fParts.IsClassification()) {
            child.RaiseMisplaced();
        }
        fRules.shares.push_back(ReadShare(child));
        if (!known.insert(fRules.shares.back().category).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.AnyText(u"value"), parent.Tag());
        }
        ++distribution.count;
        last = child;
    }
    CompleteProbabilities(distribution, last);
    return distribution;
}

Share RuleSetReader::ReadShare(const Element& element) {
    Share share;
    share.category = fParts.target->CategoryOf(element, u"value");
    if (!element.Has(kRecordCount)) {
        Raise<Message::MISSING_ATTRIBUTE_OF>(Narrow(kRecordCount), element.Tag());
    }
    share.recordCount = ReadCount(element, kRecordCount, 0.0);
    share.probability = ReadFraction(element, u"probability");
    share.confidence = ReadFraction(element, kConfidence);
    return share;
}

/// A probability that isn't told is the share of the records.
/// @param last ScoreDistribution of them
void RuleSetReader::CompleteProbabilities(Distribution distribution, const Element& last) {
    double records = 0.0;
    Share* const first = fRules.shares.data() + distribution.first;
    for (const Share* share = first; share != first + distribution.count; ++share) {
        records += share->recordCount;
    }
    if (!std::isfinite(records)) {
        last.RaiseInvalid(kRecordCount); // all together are beyond all doubles
    }
    for (Share* share = first; share != first + distribution.count; ++share) {
        if (share->probability == Prediction::kNone && records > 0.0) {
            share->probability = share->recordCount / records;
        }
    }
}

} // namespace veltrane_rules
