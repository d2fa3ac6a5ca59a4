"""Naive Bayes of scikit-learn."""
from sklearn.naive_bayes import CategoricalNB, GaussianNB

from recipes import data_sets, preparing
from recipes.entry import Entry

PRODUCER = "scikit-learn"


def entries():
    # None with priors of its own: the exporter writes how many rows each class has in their place.
    yield Entry(PRODUCER, "bayes-iris", data_sets.iris(), GaussianNB())
    survey = data_sets.marriages().only("rating", "religious", "occupation", "partner")
    steps, _ = preparing.codes(survey)
    yield Entry(PRODUCER, "bayes-categories-marriages", survey, CategoricalNB(), steps)
