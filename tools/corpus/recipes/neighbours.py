"""Neighbours and clusters of scikit-learn."""
import numpy as np
from sklearn.cluster import KMeans, MiniBatchKMeans
from sklearn.neighbors import KNeighborsClassifier, KNeighborsRegressor, NearestCentroid

from recipes import data_sets, preparing
from recipes.entry import Entry, predicted

PRODUCER = "scikit-learn"


def with_neighbours(pipeline, rows, entry):
    """The documents name the neighbours, too, by their places among the instances, and tell no probabilities. The model
    names equally near ones in any order, and any of them as the last; here those that come first go first."""
    model, inputs = pipeline.steps[-1][1], rows
    for _, step in pipeline.steps[:-1]:
        inputs = step.transform(inputs)
    distances, instances = model.kneighbors(inputs, n_neighbors=model.n_samples_fit_)
    order = np.lexsort((instances, distances))[:, :model.n_neighbors]
    places = np.take_along_axis(instances, order, axis=1) + 1
    return {**predicted(pipeline, rows, entry),
            **{f"neighbor({rank})": column for rank, column in enumerate(places.T, 1)}}


def clusters(pipeline, rows, entry):
    """The number of the cluster, twice, and the squared distances from all."""
    distances = pipeline.transform(rows) ** 2
    number = pipeline.predict(rows)
    return {"prediction": number, "cluster": number,
            **{f"affinity({place})": column for place, column in enumerate(distances.T)}}


def near(name, data, model, steps=(), answered=with_neighbours):
    return Entry(PRODUCER, name, data, model, steps, answered=answered)


def entries():
    iris, wine, people = data_sets.iris(), data_sets.wine(), data_sets.diabetes()
    scaled_wine, scaled_people = preparing.indicators(wine, scaled=True), preparing.indicators(people, scaled=True)
    yield near("neighbours-iris", iris, KNeighborsClassifier(5))
    yield near("neighbours-euclidean-iris", iris, KNeighborsClassifier(4, metric="euclidean"))
    yield near("neighbours-manhattan-wine", wine, KNeighborsClassifier(3, metric="manhattan"), scaled_wine)
    yield near("neighbours-weighted-diabetes", people, KNeighborsRegressor(5, weights="distance"), scaled_people)
    yield near("neighbours-diabetes", people, KNeighborsRegressor(3, metric="minkowski", p=3), scaled_people)
    yield near("centroids-iris", iris, NearestCentroid(), answered=predicted)
    yield near("clusters-iris", iris, KMeans(3, n_init=3, random_state=13), answered=clusters)
    yield near("clusters-wine", wine, MiniBatchKMeans(4, n_init=3, random_state=13), scaled_wine, clusters)
