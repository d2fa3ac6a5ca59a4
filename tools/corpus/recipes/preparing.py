"""Steps that stand before models."""
from sklearn.compose import ColumnTransformer
from sklearn.impute import SimpleImputer
from sklearn.pipeline import Pipeline
from sklearn.preprocessing import OneHotEncoder, OrdinalEncoder, StandardScaler
from sklearn2pmml.decoration import CategoricalDomain, ContinuousDomain


def passed(data):
    """The columns as they are, but with domains, which the document then states and checks."""
    kept = [(name, ContinuousDomain(invalid_value_treatment="as_is"), [name]) for name in data.continuous()]
    flags = [(name, CategoricalDomain(), [name]) for name in data.flags()]
    return [("columns", ColumnTransformer(kept + flags).set_output(transform="pandas"))]


def indicators(data, scaled=False):
    """An indicator for each category; numbers as they are, or standardised."""
    numbers = ("numbers", StandardScaler() if scaled else "passthrough", data.continuous())
    texts = ("texts", OneHotEncoder(sparse_output=False), data.categorical())
    return [("columns", ColumnTransformer([texts, numbers] if data.categorical() else [numbers]))]


def codes(data):
    """A number for each category, as the models take them that know of categories; missing ones stay missing. Says
    which columns are categories, too."""
    texts, numbers = data.categorical(), data.continuous()
    encoder = OrdinalEncoder()
    return ([("columns", ColumnTransformer([("texts", encoder, texts), ("numbers", "passthrough", numbers)]))],
            list(range(len(texts))))


def categories(data):
    """Texts as categories of pandas, for the models that take data frames."""
    return [("columns", ColumnTransformer(
        [(name, CategoricalDomain(dtype="category", invalid_value_treatment="as_is"), [name])
         for name in data.categorical()] +
        [(name, ContinuousDomain(invalid_value_treatment="as_is"), [name]) for name in data.continuous()],
        verbose_feature_names_out=False).set_output(transform="pandas"))]


def completed(data):
    """Missing numbers by their median, missing categories by the most frequent one, categories as indicators."""
    texts = Pipeline([("completed", SimpleImputer(strategy="most_frequent")),
                      ("indicators", OneHotEncoder(sparse_output=False))])
    numbers = Pipeline([("completed", SimpleImputer(strategy="median")), ("scaled", StandardScaler())])
    return [("columns", ColumnTransformer([("texts", texts, data.categorical()),
                                           ("numbers", numbers, data.continuous())]))]
