"""The double exponential rule for tails of distributions with many degrees of freedom.

On the scale of the logarithm, or of the logit, the densities of the gamma and the beta distribution are log-concave. So
the integrand of a tail from beyond the mode falls from its first point on, and some two hundred points have it to thirty
digits, however large the parameters are, where the terms of an expansion grow with them.
"""
from mpmath import mpf, exp

# The step of the rule, and half the digits that it leaves.
FINE = (mpf(1) / 20, 12)
ROUGH = (mpf(1) / 7, 3)


def half_line(exponent, rule=FINE):
    """The integral of exp(-exponent(s)) over s > 0, for a convex exponent that rises from 0."""
    step, digits = rule
    size = mpf(1)
    while exponent(size) > 1:
        size /= 16
    while exponent(size) < 1:
        size *= 2
    sums = [mpf(0), mpf(0)]
    k = int(-4.3 / step)
    while True:
        u = k * step
        rest = exp(-u)
        s = size * exp(u - rest)
        height = exponent(s)
        if height > 75:
            break
        sums[k % 2] += exp(-height) * s * (1 + rest)
        k += 1
    total = sums[0] + sums[1]
    # Either half of the points is a rule of its own; where they agree to half the digits, both have them all.
    if abs(sums[0] - sums[1]) > mpf(10) ** -digits * total:
        raise ArithmeticError("the rule hasn't converged")
    return total * step
