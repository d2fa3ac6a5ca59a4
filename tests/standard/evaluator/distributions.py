"""The normal family. The quantile is found by bisection and Newton's method on the distribution function itself."""
import math


def std_normal_pdf(x):
    return math.exp(-x * x / 2) / math.sqrt(2 * math.pi)


def std_normal_cdf(x):
    return math.erfc(-x / math.sqrt(2)) / 2


def std_normal_idf(p):
    """The x whose distribution function is p, for p between 0 and 1."""
    if not 0 < p < 1:
        raise ValueError("stdNormalIDF")
    if p >= 0.5:
        return 0.0 if p == 0.5 else -std_normal_idf(1 - p)
    low, high = -40.0, 0.0
    for _ in range(200):
        middle = (low + high) / 2
        if middle in (low, high):
            break
        if std_normal_cdf(middle) < p:
            low = middle
        else:
            high = middle
    x = (low + high) / 2
    step = (std_normal_cdf(x) - p) / std_normal_pdf(x)
    return x - step if abs(step) < 1e-8 else x


def _checked(sigma):
    if not sigma > 0:
        raise ValueError("sigma")
    return sigma


def normal_pdf(x, mu, sigma):
    return std_normal_pdf((x - mu) / _checked(sigma)) / sigma


def normal_cdf(x, mu, sigma):
    return std_normal_cdf((x - mu) / _checked(sigma))


def normal_idf(p, mu, sigma):
    return mu + _checked(sigma) * std_normal_idf(p)
