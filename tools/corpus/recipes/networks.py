"""Networks of scikit-learn."""
from sklearn.neural_network import MLPClassifier, MLPRegressor

from recipes import data_sets, preparing
from recipes.entry import Entry

PRODUCER = "scikit-learn"


def network(model, *layers, activation="relu"):
    return model(hidden_layer_sizes=layers, activation=activation, max_iter=300, random_state=11)


def entries():
    people, survey, cancer = data_sets.diabetes(), data_sets.marriages(), data_sets.cancer()
    yield Entry(PRODUCER, "network-iris", data_sets.iris(), network(MLPClassifier, 5),
                preparing.indicators(data_sets.iris(), scaled=True))
    yield Entry(PRODUCER, "network-tanh-cancer", cancer, network(MLPClassifier, 6, 4, activation="tanh"),
                preparing.indicators(cancer, scaled=True))
    yield Entry(PRODUCER, "network-logistic-marriages", survey, network(MLPClassifier, 4, activation="logistic"),
                preparing.indicators(survey, scaled=True))
    yield Entry(PRODUCER, "network-digits", data_sets.digits(), network(MLPClassifier, 8))
    yield Entry(PRODUCER, "network-identity-diabetes", people, network(MLPRegressor, 3, activation="identity"),
                preparing.indicators(people, scaled=True))
    yield Entry(PRODUCER, "network-diabetes", people, network(MLPRegressor, 6, 3),
                preparing.indicators(people, scaled=True))
