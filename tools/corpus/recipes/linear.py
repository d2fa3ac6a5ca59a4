"""Linear models of scikit-learn and statsmodels, with links."""
import pandas as pd
import statsmodels.api as sm
from sklearn.discriminant_analysis import LinearDiscriminantAnalysis
from sklearn.linear_model import (ElasticNet, GammaRegressor, LinearRegression, LogisticRegression, PoissonRegressor,
                                  RidgeClassifier, SGDClassifier, TweedieRegressor)
from sklearn2pmml.statsmodels import StatsModelsClassifier, StatsModelsOrdinalClassifier, StatsModelsRegressor
from statsmodels.miscmodels.ordinal_model import OrderedModel

from recipes import data_sets, preparing
from recipes.entry import Entry, predictions

LEARN, STATS = "scikit-learn", "statsmodels"


def regressions():
    people, counts = data_sets.diabetes(), data_sets.marriage_children()
    yield Entry(LEARN, "linear-diabetes", people, LinearRegression(), preparing.indicators(people))
    gaps = people.with_missing(0.1)
    yield Entry(LEARN, "elastic-net-diabetes-missing", gaps, ElasticNet(alpha=0.1), preparing.completed(gaps))
    yield Entry(LEARN, "poisson-children", counts, PoissonRegressor(max_iter=300), preparing.indicators(counts, True))
    yield Entry(LEARN, "gamma-diabetes", people, GammaRegressor(max_iter=300), preparing.indicators(people, True))
    yield Entry(LEARN, "tweedie-diabetes", people, TweedieRegressor(power=1.5, max_iter=300),
                preparing.indicators(people, True))


def classifications():
    iris, wine, survey = data_sets.iris(), data_sets.wine(), data_sets.marriages()
    yield Entry(LEARN, "logistic-marriages", survey, LogisticRegression(max_iter=500),
                preparing.indicators(survey, scaled=True))
    yield Entry(LEARN, "logistic-iris", iris, LogisticRegression(max_iter=500))
    yield Entry(LEARN, "ridge-classes-iris", iris, RidgeClassifier())
    yield Entry(LEARN, "descent-wine", wine, SGDClassifier(loss="log_loss", random_state=17),
                preparing.indicators(wine, True))
    yield Entry(LEARN, "discriminant-wine", wine, LinearDiscriminantAnalysis())


def ordered_iris():
    """The species in an order, as a target of ordered categories."""
    data = data_sets.iris().only("sepal_length", "sepal_width")
    kind = pd.CategoricalDtype(["setosa", "versicolor", "virginica"], ordered=True)
    return data.asking_for(data.target.astype(kind))


def with_sum(pipeline, rows, entry):
    """The document tells the sum that the thresholds exceed, too, with the sign that it has there."""
    model = pipeline.steps[-1][1]
    return {**predictions(pipeline, rows, entry), "linpred": -rows.to_numpy() @ model.coef_}


def of_stats():
    people, numbers = data_sets.diabetes(), data_sets.marriage_children().only("age", "years", "educ")
    cancer = data_sets.cancer().only("mean_radius", "mean_texture", "mean_smoothness")
    iris = data_sets.iris().only("sepal_length", "sepal_width")
    yield Entry(STATS, "stats-ols-diabetes", people, StatsModelsRegressor(sm.OLS), preparing.indicators(people))
    yield Entry(STATS, "stats-logit-cancer", cancer, StatsModelsClassifier(sm.Logit))
    yield Entry(STATS, "stats-mnlogit-iris", iris, StatsModelsClassifier(sm.MNLogit))
    yield Entry(STATS, "stats-poisson-children", numbers, StatsModelsRegressor(sm.Poisson))
    yield Entry(STATS, "stats-quantile-diabetes", people.only("bmi", "bp", "s5"), StatsModelsRegressor(sm.QuantReg))
    yield Entry(STATS, "stats-ordered-iris", ordered_iris(), StatsModelsOrdinalClassifier(OrderedModel, distr="logit"),
                answered=with_sum)


def entries():
    yield from regressions()
    yield from classifications()
    yield from of_stats()
