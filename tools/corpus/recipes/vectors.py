"""Support vector machines of scikit-learn."""
from sklearn.svm import SVC, SVR, NuSVC, NuSVR, OneClassSVM

from recipes import data_sets, preparing
from recipes.entry import Entry

PRODUCER = "scikit-learn"


def outliers(pipeline, rows, entry):
    """The document's prediction is the value of the function; what it says of outliers are output fields."""
    values, signs = pipeline.decision_function(rows), pipeline.predict(rows)
    return {"prediction": values, "decisionFunction": values, "outlier": signs < 0, "predict(outlier)": signs}


def entries():
    iris, wine, people = data_sets.iris(), data_sets.wine(), data_sets.diabetes()
    yield Entry(PRODUCER, "vectors-linear-iris", iris, SVC(kernel="linear"))
    yield Entry(PRODUCER, "vectors-radial-wine", wine, SVC(), preparing.indicators(wine, scaled=True))
    yield Entry(PRODUCER, "vectors-polynomial-cancer", data_sets.cancer(), SVC(kernel="poly", degree=2, coef0=1.0),
                preparing.indicators(data_sets.cancer(), scaled=True))
    yield Entry(PRODUCER, "vectors-sigmoid-iris", iris, SVC(kernel="sigmoid"), preparing.indicators(iris, scaled=True))
    yield Entry(PRODUCER, "vectors-nu-iris", iris, NuSVC(nu=0.3))
    yield Entry(PRODUCER, "vectors-diabetes", people, SVR(C=50.0), preparing.indicators(people, scaled=True))
    yield Entry(PRODUCER, "vectors-nu-diabetes", people, NuSVR(C=50.0, nu=0.2),
                preparing.indicators(people, scaled=True))
    yield Entry(PRODUCER, "vectors-one-class-iris", iris, OneClassSVM(nu=0.2, gamma=0.3), answered=outliers)
