"""Single trees of scikit-learn."""
from sklearn.tree import DecisionTreeClassifier, DecisionTreeRegressor, ExtraTreeClassifier

from recipes import data_sets, preparing
from recipes.entry import Entry

PRODUCER = "scikit-learn"
#: Without it the exporter leaves out which way missing values go.
DEFAULT_CHILDREN = {"allow_missing": True}


def entries():
    yield Entry(PRODUCER, "tree-iris", data_sets.iris(), DecisionTreeClassifier(max_depth=4, random_state=1))
    yield Entry(PRODUCER, "tree-digits", data_sets.digits(), DecisionTreeClassifier(max_depth=6, random_state=1))
    survey = data_sets.marriages()
    yield Entry(PRODUCER, "tree-marriages", survey, DecisionTreeClassifier(max_depth=6, random_state=1),
                preparing.indicators(survey))
    gaps = data_sets.wine().with_missing(0.15)
    yield Entry(PRODUCER, "tree-wine-missing", gaps, DecisionTreeClassifier(max_depth=4, random_state=1),
                options=DEFAULT_CHILDREN)
    yield Entry(PRODUCER, "tree-wine-nodes", data_sets.wine(), DecisionTreeClassifier(max_depth=4, random_state=1),
                options={"compact": False, "node_score": True})
    people = data_sets.diabetes()
    yield Entry(PRODUCER, "tree-diabetes", people, DecisionTreeRegressor(max_depth=5, random_state=1),
                preparing.indicators(people))
    yield Entry(PRODUCER, "extra-tree-cancer", data_sets.cancer(), ExtraTreeClassifier(max_depth=6, random_state=1))
