"""RuleSetModel.

The rules that hold for a case are those whose predicate is true and those of all compound rules around them. The first
selection method counts.

Decision: of equal weights the rule that stands first wins, of equal sums the category that the dictionary lists first, or the
number that the document has first.
Decision: probabilities are those of the distribution of the chosen rule, by probability, else by the records; under weightedSum
the mean of all rules that hold and have a distribution, by their weights where these are above 0.
Decision: under weightedSum the confidence of a category is the sum of those of its rules, over the number of rules that hold. A
category that no rule predicts has the confidence that the chosen rule's distribution tells, else 0.
Decision: behind the prediction come the others that rules predict, in the order of the criterion; a number has no second one.
"""
from .predicates import evaluate, predicate_of
from .prediction import Prediction
from .values import number_of


class Rule:
    def __init__(self, element, place):
        self.place, self.score = place, element.get("score")
        self.id = element.get("id", str(place + 1))
        self.weight, self.confidence = float(element.get("weight", "1")), float(element.get("confidence", "1"))
        self.correct = element.get("nbCorrect")
        self.shares = _Shares(element)


class _Shares:
    """The ScoreDistributions of an element."""

    def __init__(self, element):
        self._elements = [child for child in element if child.tag == "ScoreDistribution"]

    def __bool__(self):
        return bool(self._elements)

    def probabilities(self):
        records = sum(float(each.get("recordCount")) for each in self._elements)
        found = {}
        for each in self._elements:
            if each.get("probability") is not None:
                found[each.get("value")] = float(each.get("probability"))
            else:
                found[each.get("value")] = float(each.get("recordCount")) / records
        return found

    def confidences(self):
        return {each.get("value"): float(each.get("confidence")) for each in self._elements if each.get("confidence") is not None}


class _RuleSet:
    def __init__(self, model, env):
        self._element = next(child for child in model if child.tag == "RuleSet")
        self._env, self._count = env, 0
        self._regression = model.get("functionName") == "regression"
        self._criterion = next(child for child in self._element if child.tag == "RuleSelectionMethod").get("criterion")

    def _hits(self, parent, holds):
        """The rules below an element that hold, in the document's order; all of them get their places."""
        found = []
        for child in parent:
            if child.tag == "SimpleRule":
                rule = Rule(child, self._count)
                self._count += 1
                if holds and evaluate(predicate_of(child), self._env) is True:
                    found.append(rule)
            elif child.tag == "CompoundRule":
                found += self._hits(child, holds and evaluate(predicate_of(child), self._env) is True)
        return found

    def _place(self, rules):
        """The places of scores, by which equal sums are told apart."""
        if not self._regression:
            return self._env.categories().index
        numbers = [each.get("defaultScore") for each in [self._element] if each.get("defaultScore") is not None]
        numbers += [each.get("score") for each in self._element.iter("SimpleRule")]
        return [float(each) for each in numbers].index

    def _ordered(self, rules):
        if self._criterion == "firstHit":
            return rules
        if self._criterion == "weightedMax":
            return sorted(rules, key=lambda rule: -rule.weight)
        key = (lambda rule: float(rule.score)) if self._regression else lambda rule: rule.score
        sums, place = {}, self._place(rules)
        for rule in rules:
            sums[key(rule)] = sums.get(key(rule), 0.0) + rule.weight
        return sorted(rules, key=lambda rule: (-sums[key(rule)], place(key(rule)), -rule.weight, rule.place))

    def _told(self, rule):
        records = float(self._element.get("recordCount", "0"))
        return {"consequent": rule.score, "ruleId": rule.id, "confidence": rule.confidence,
                "support": float(rule.correct) / records if rule.correct is not None and records else None}

    def score(self):
        rules = self._ordered(self._hits(self._element, True))
        if not rules:
            return self._default()
        told = [self._told(rule) for rule in rules]
        if self._regression:
            return Prediction(number_of(rules[0].score), entity=rules[0].id, rules=told)
        order = list(dict.fromkeys(rule.score for rule in rules))
        return Prediction(order[0], self._probabilities(rules), self._confidences(rules, order), rules[0].id, rules=told,
                          order=order)

    def _default(self):
        text, confidence = self._element.get("defaultScore"), self._element.get("defaultConfidence")
        if text is None:
            return Prediction()
        if self._regression:
            return Prediction(number_of(text))
        confidences = {each: 0.0 for each in self._env.categories()} if confidence is not None else {}
        if confidence is not None:
            confidences[text] = float(confidence)
        return Prediction(text, self._completed(_Shares(self._element)), confidences)

    def _completed(self, shares):
        """The probabilities of all categories; none where nothing is told."""
        return {**{each: 0.0 for each in self._env.categories()}, **shares.probabilities()} if shares else {}

    def _probabilities(self, rules):
        if self._criterion != "weightedSum":
            return self._completed(rules[0].shares)
        telling = [rule for rule in rules if rule.shares and rule.weight > 0]
        total = sum(rule.weight for rule in telling)
        found = {}
        for rule in telling:
            for category, share in rule.shares.probabilities().items():
                found[category] = found.get(category, 0.0) + rule.weight * share / total
        return found

    def _confidences(self, rules, order):
        found = {each: 0.0 for each in self._env.categories()}
        if self._criterion == "weightedSum":
            for category in order:
                found[category] = sum(rule.confidence for rule in rules if rule.score == category) / len(rules)
            return found
        found.update(rules[0].shares.confidences())
        found.update({category: next(rule.confidence for rule in rules if rule.score == category) for category in order})
        return found


def score(model, env, _target):
    """The Prediction of a case."""
    return _RuleSet(model, env).score()
