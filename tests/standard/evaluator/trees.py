"""TreeModel.

A case starts at the root and goes to the first child whose predicate is true. Where one that comes before it is unknown,
missingValueStrategy decides; where none is true, noTrueChildStrategy.

The current winner, which lastPrediction and returnLastPrediction return, is the prediction of the node at hand.
Decision: where that node predicts nothing itself, it is that of the nearest one above that does.
Decision: a node without a score predicts the category with the highest probability, which is the ScoreDistribution's
probability, else its share of the records.
Decision: weightedConfidence and aggregateNodes give a regression the mean of the scores, weighed by record counts;
children without a prediction are left out of it, and weigh nothing further up either, as in a classification.
Decision: aggregateNodes, like weightedConfidence, goes on to all children that aren't false where one is unknown before
one is true.
Decision: leaves without records have no prediction together.
Decision: missingValuePenalty counts the steps on the case's way, also where a node further up predicts. Of a case that
may be in several nodes the confidence of each counts the steps on the way to that node; with aggregateNodes a
confidence is the share of the records, each leaf's less its penalty, and the most records still win.
Decision: of equally probable categories the one with the most records wins, and the first in the node among those.
"""
from .predicates import evaluate, predicate_of, uses_surrogate
from .prediction import Prediction, winner
from .values import Unsupported, number_of


class _Node:
    def __init__(self, element, parent, names):
        names.append(None)
        self.number = str(len(names))
        self.element, self.parent = element, parent
        self.id = element.get("id")
        self.children = [_Node(child, self, names) for child in element if child.tag == "Node"]
        self.shares = [child for child in element if child.tag == "ScoreDistribution"]

    def predicts(self):
        return self.element.get("score") is not None or bool(self.shares)

    def records(self):
        count = self.element.get("recordCount")
        return float(count) if count is not None else sum(self.counts().values())

    def counts(self):
        return {each.get("value"): float(each.get("recordCount")) for each in self.shares}

    def probabilities(self):
        total = sum(self.counts().values())
        return {each.get("value"): float(each.get("probability")) if each.get("probability") is not None
                else float(each.get("recordCount")) / total for each in self.shares}

    def confidences(self):
        given = {each.get("value"): each.get("confidence") for each in self.shares}
        return {category: share if given[category] is None else float(given[category])
                for category, share in self.probabilities().items()}

    def entity(self):
        return self.id if self.id is not None else self.number


class Tree:
    def __init__(self, model):
        self._model = model
        self._regression = model.get("functionName") == "regression"
        self._missing = model.get("missingValueStrategy", "none")
        self._penalty = float(model.get("missingValuePenalty", "1"))
        self._last = model.get("noTrueChildStrategy", "returnNullPrediction") == "returnLastPrediction"
        self._root = _Node(next(child for child in model if child.tag == "Node"), None, [])

    def score(self, env):
        if evaluate(predicate_of(self._root.element), env) is not True:
            return Prediction()
        return self._descend(self._root, env, 0)

    def _descend(self, node, env, steps):
        """The prediction of a case that has come to a node after so many steps with a substitute."""
        if not node.children:
            return self._of(node, steps)
        for place, child in enumerate(node.children):
            predicate = predicate_of(child.element)
            result = evaluate(predicate, env)
            if result is True:
                return self._descend(child, env, steps + uses_surrogate(predicate, env))
            if result is None and self._missing != "none":
                return self._unknown(node, place, env, steps)
        return self._current(node, steps) if self._last else Prediction()

    def _unknown(self, node, place, env, steps):
        strategy = self._missing
        if strategy == "lastPrediction":
            return self._current(node, steps)
        if strategy == "nullPrediction":
            return Prediction()
        if strategy == "defaultChild":
            child = next((each for each in node.children if each.id == node.element.get("defaultChild")), None)
            return Prediction() if child is None else self._descend(child, env, steps + 1)
        if strategy == "weightedConfidence":
            return self._weighted(node, env, steps)
        return self._aggregate(node, env, steps)

    def _current(self, node, steps):
        while node is not None and not node.predicts():
            node = node.parent
        return Prediction() if node is None else self._of(node, steps)

    def _of(self, node, steps):
        """The prediction of a node itself."""
        if not node.predicts():
            return Prediction()
        score, penalty = node.element.get("score"), self._penalty ** steps
        if self._regression:
            return Prediction(None if score is None else float(number_of(score)), entity=node.entity())
        probabilities = node.probabilities()
        confidences = {category: share * penalty for category, share in node.confidences().items()}
        most = {category: (share, node.counts()[category]) for category, share in probabilities.items()}
        return Prediction(winner(most) if score is None else score, probabilities, confidences, node.entity())

    def _candidates(self, node, env):
        return [child for child in node.children if evaluate(predicate_of(child.element), env) is not False]

    def _weighted(self, node, env, steps):
        children = self._candidates(node, env)
        total = sum(child.records() for child in children)
        parts = [(self._descend(child, env, steps + self._step(child, env)), child.records() / total) for child in children]
        if self._regression:
            parts = [(part.value, weight * part.share) for part, weight in parts if not part.is_none]
            share = sum(weight for _, weight in parts)
            return Prediction(sum(value * weight for value, weight in parts) / share if parts else None, share=share)
        confidences = _weighed([(part.confidences, weight) for part, weight in parts])
        probabilities = _weighed([(part.probabilities, weight) for part, weight in parts])
        return Prediction(winner(confidences), probabilities, confidences)

    def _step(self, child, env):
        return uses_surrogate(predicate_of(child.element), env)

    def _leaves(self, node, env, steps):
        """The leaves below a node that the case may come to, each with the steps to it."""
        if not node.children:
            return [(node, steps)]
        reached = self._candidates(node, env)
        if reached and evaluate(predicate_of(reached[0].element), env) is True:
            reached = reached[:1]
        return [leaf for child in reached for leaf in self._leaves(child, env, steps + self._step(child, env))]

    def _aggregate(self, node, env, steps):
        leaves = self._leaves(node, env, steps)
        if self._regression:
            total = sum(leaf.records() for leaf, _ in leaves)
            if total == 0:
                return Prediction()
            return Prediction(sum(float(leaf.element.get("score")) * leaf.records() for leaf, _ in leaves) / total)
        counts = _weighed([(leaf.counts(), 1) for leaf, _ in leaves])
        total = sum(counts.values())
        if total == 0:
            return Prediction()
        shares = {category: count / total for category, count in counts.items()}
        less = _weighed([(leaf.counts(), self._penalty ** taken) for leaf, taken in leaves])
        return Prediction(winner(shares), shares, {category: count / total for category, count in less.items()})


def _weighed(parts):
    total = {}
    for shares, weight in parts:
        for category, share in shares.items():
            total[category] = total.get(category, 0.0) + share * weight
    return total


def score(model, env, _target):
    if model.get("splitCharacteristic") not in (None, "binarySplit", "multiSplit"):
        raise Unsupported("splitCharacteristic")
    return Tree(model).score(env)
