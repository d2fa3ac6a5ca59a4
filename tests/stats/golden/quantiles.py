"""Quantiles of the gamma and the beta distribution at high precision.

On the scale of the logarithm, or of the logit, either density is log-concave, whatever its parameters. So the logarithm
of a tail is concave, which Newton's method can't miss.
"""
from mpmath import mp, mpf, exp, log, loggamma

import reference as ref
from quadrature import FINE, ROUGH


class Gamma:
    """The gamma distribution by t = ln x."""

    largest_step = mp.inf

    def __init__(self, shape):
        self.a = mpf(shape)
        self.norm = loggamma(self.a)

    def tails(self, t, rule=FINE):
        """Lower tail, upper tail and density at t."""
        a, x = self.a, exp(t)
        density = exp(a * t - x - self.norm)
        return *ref.gamma_tails(a, x, rule), density

    def mirrored(self):
        return UpperGamma(self)

    def start(self, logp):
        """Left of the middle: the leading term for a small tail."""
        return min(log(self.a), (logp + loggamma(self.a + 1)) / self.a)


class Beta:
    """The beta distribution by t = ln(x / (1 - x))."""

    largest_step = mp.inf

    def __init__(self, a, b):
        self.a, self.b = mpf(a), mpf(b)
        self.norm = loggamma(self.a) + loggamma(self.b) - loggamma(self.a + self.b)

    def tails(self, t, rule=FINE):
        a, b, x, y = self.a, self.b, 1 / (1 + exp(-t)), 1 / (1 + exp(t))
        density = exp(a * log(x) + b * log(y) - self.norm)
        return *ref.beta_tails(a, b, x, y, rule), density

    def mirrored(self):
        return Beta(self.b, self.a)

    def start(self, logp):
        return min(log(self.a / self.b), (logp + log(self.a) + self.norm) / self.a)


class UpperGamma:
    """The gamma distribution by -ln x, so that its lower tail is the upper one."""

    # The tail falls with the exponential of t: a tangent would lead too far.
    largest_step = 3

    def __init__(self, distribution):
        self.distribution = distribution

    def tails(self, t, rule=FINE):
        lower, upper, density = self.distribution.tails(-t, rule)
        return upper, lower, density

    def start(self, _):
        return -log(self.distribution.a)


def newton(distribution, p, t, rule, near):
    """Steps of Newton's method on the logarithm of the lower tail, until its step or its distance is near enough."""
    logp = log(p)
    for _ in range(300):
        lower, _, density = distribution.tails(t, rule)
        distance = logp - log(lower)
        step = distance * lower / density
        t += max(step, -distribution.largest_step)
        if near(abs(step) / max(abs(t), mpf(10) ** -3), abs(distance)):
            return t
    raise ArithmeticError("no convergence")


def rough_quantile(distribution, p):
    """Some t whose lower tail is about p, which isn't above a half."""
    with mp.workdps(30):
        return newton(distribution, p, distribution.start(log(p)), ROUGH, lambda _, distance: distance < 0.01)


def quantile(distribution, p):
    """The t whose lower tail is p. The smaller part of 1 is solved for."""
    p = mpf(p)
    if p > 0.5:
        return -quantile(distribution.mirrored(), 1 - p)
    return newton(distribution, p, rough_quantile(distribution, p), FINE, lambda step, _: step < mpf(10) ** -18)
