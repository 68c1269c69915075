"""Ratings of players who have played each other, on one scale.

The model of Bradley and Terry: player i has the strength r(i), and expects 1 / (1 + 10 ^ ((r(j) - r(i)) / 400)) of the
points against player j. The strengths are those with which the points that were made are likeliest, a draw as half a win
and half a loss; each step of Newton's method solves one system of linear equations, until nothing moves. Strengths are
known up to a constant: their mean is 0. For each two players one drawn game is added, so that one who won or lost them all
has a rating too; among a hundred games that takes off about a hundredth of a lead.

The errors don't take the model's word for how much results vary, but that of the pairs of games (statistics.py): with the
information matrix H, and the variance V of the points as the pairs show it, the covariance is H^-1 V H^-1.
"""

import math
from typing import NamedTuple

from .statistics import WIDTH_OF_95_PERCENT, score_of_elo

STEPS = 100
LEAST_STEP = 1e-9
LONGEST_STEP = 400.0  # Elo; a longer one would overshoot
PER_ELO = math.log(10) / 400


class Rating(NamedTuple):
    elo: float
    error: float  # half the width of the 95 % interval


def points_of(counts):
    """Of the first player of a match, by how many pairs of games gave it 0, 1, 2, 3 and 4 half points."""
    return sum(half_points * count for half_points, count in enumerate(counts)) / 2


def variance_of(counts):
    """Of these points."""
    pairs = sum(counts)
    mean = points_of(counts) / pairs
    return sum((half_points / 2 - mean) ** 2 * count for half_points, count in enumerate(counts))


def solve(matrix, right):
    """x with matrix x = right, by Gauss's elimination."""
    size = len(matrix)
    rows = [list(row) + [value] for row, value in zip(matrix, right)]
    for i in range(size):
        pivot = max(range(i, size), key=lambda row: abs(rows[row][i]))
        rows[i], rows[pivot] = rows[pivot], rows[i]
        for row in range(i + 1, size):
            factor = rows[row][i] / rows[i][i]
            for column in range(i, size + 1):
                rows[row][column] -= factor * rows[i][column]
    solution = [0.0] * size
    for i in reversed(range(size)):
        known = sum(rows[i][column] * solution[column] for column in range(i + 1, size))
        solution[i] = (rows[i][size] - known) / rows[i][i]
    return solution


def ratings_of(count, matches):
    """Ratings of so many players, numbered from 0. `matches`: counts of pairs of games by (first, second)."""
    if count < 2:
        return [Rating(0.0, 0.0)] * count
    games = {(i, j): (1.0, 0.5) for i in range(count) for j in range(i + 1, count)}  # games, points of the first
    for (i, j), counts in matches.items():
        played, points = 2.0 * sum(counts), points_of(counts)
        key = min(i, j), max(i, j)
        before = games[key]
        games[key] = before[0] + played, before[1] + (points if i < j else played - points)
    elo = [0.0] * count
    for _ in range(STEPS):
        gradient, information = slopes(elo, games)
        step = solve(information, gradient)
        longest = max(map(abs, step))
        scale = min(1.0, LONGEST_STEP / longest) if longest else 1.0
        elo = [value + scale * change for value, change in zip(elo, step)]
        if longest < LEAST_STEP:
            break
    mean = sum(elo) / count
    errors = errors_of(slopes(elo, games)[1], matches)
    return [Rating(value - mean, error) for value, error in zip(elo, errors)]


def slopes(elo, games):
    """How the logarithm of the likelihood grows with each rating, and its information matrix, to which a constant is
    added everywhere: it settles what a shift of all ratings leaves open, and takes no part in their differences."""
    count = len(elo)
    gradient = [0.0] * count
    information = [[PER_ELO ** 2] * count for _ in range(count)]
    for (i, j), (played, points) in games.items():
        expected = score_of_elo(elo[i] - elo[j])
        slope = PER_ELO * (points - played * expected)
        gradient[i] += slope
        gradient[j] -= slope
        bend = PER_ELO ** 2 * played * expected * (1 - expected)
        for a, b, sign in ((i, i, 1), (j, j, 1), (i, j, -1), (j, i, -1)):
            information[a][b] += sign * bend
    return gradient, information


def errors_of(information, matches):
    """A match moves the ratings along H^-1 (e(i) - e(j)), as far as its points vary."""
    variance = [0.0] * len(information)
    for (i, j), counts in matches.items():
        along = [0.0] * len(information)
        along[i], along[j] = PER_ELO, -PER_ELO
        shift = solve(information, along)
        spread = variance_of(counts)
        variance = [sum_so_far + spread * part ** 2 for sum_so_far, part in zip(variance, shift)]
    return [WIDTH_OF_95_PERCENT * math.sqrt(value) for value in variance]
