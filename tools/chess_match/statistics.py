"""What the results of a match say about the strength of the first player.

Games come in pairs: one opening, played twice with colours turned. The same as in tools/selfplay, where the reasons stand
(statistics.h); a test compares both on the same counts.
"""

import math
import sys
from typing import NamedTuple, Optional

# Half of the 95 % interval of the normal distribution, in standard deviations.
WIDTH_OF_95_PERCENT = 1.959963984540054
# One unit of normalized Elo is as many standard deviations of a game.
NORMALIZED_UNIT = 800 / math.log(10)
GAMES_IN_A_PAIR = 2


class Measured(NamedTuple):
    """A value with half the width of its 95 % interval. No error is known as long as all pairs have ended alike."""
    value: float = 0.0
    error: Optional[float] = None


class Strength(NamedTuple):
    score: Measured  # share of the points, 0 to 1
    elo: Measured
    normalized_elo: Optional[Measured]  # the lead in standard deviations of a game; None while all pairs have ended alike
    superiority: float  # the chance that the first player is the stronger one


def elo_of_score(score):
    return -400 * math.log10(1 / score - 1)


def score_of_elo(elo):
    return 1 / (1 + 10 ** (-elo / 400))


def strength_of(counts):
    """`counts`: how many pairs gave the first player 0, 1, 2, 3 and 4 half points; at least one pair."""
    pairs = sum(counts)
    mean = sum(half_points / 4 * count / pairs for half_points, count in enumerate(counts))
    variance = sum((half_points / 4 - mean) ** 2 * count / pairs for half_points, count in enumerate(counts))
    # A match without a lost point tells no more than that the next half point was not lost.
    least = 0.25 / (GAMES_IN_A_PAIR * pairs)

    def elo(score):
        return elo_of_score(min(max(score, least), 1 - least))

    if variance <= 0:
        superiority = 0.5 if mean == 0.5 else float(mean > 0.5)
        return Strength(Measured(mean), Measured(elo(mean)), None, superiority)
    lead = mean - 0.5
    deviation = math.sqrt(variance / pairs)
    error = WIDTH_OF_95_PERCENT * deviation
    return Strength(
        Measured(mean, error),
        Measured(elo(mean), (elo(mean + error) - elo(mean - error)) / 2),
        Measured(NORMALIZED_UNIT * lead / math.sqrt(GAMES_IN_A_PAIR * variance),
                 NORMALIZED_UNIT * WIDTH_OF_95_PERCENT / math.sqrt(GAMES_IN_A_PAIR * pairs)),
        math.erfc(-lead / deviation / math.sqrt(2)) / 2)


# --- When to stop ---

# A result that has not come up yet may still come: it counts as a thousandth of a pair.
UNSEEN = 1e-3
# The risks to call a player better that is not, and no better though it is.
ALPHA, BETA = 0.05, 0.05
LOWER_BOUND, UPPER_BOUND = math.log(BETA / (1 - ALPHA)), math.log((1 - BETA) / ALPHA)


class Sprt(NamedTuple):
    """The sequential probability ratio test between two hypotheses about the Elo."""
    elo0: float  # "no better": the lead is this
    elo1: float  # "better": the lead is this; more than elo0

    def ratio(self, counts):
        """The logarithm of how much likelier the results are with the second lead than with the first; 0 without pairs."""
        if not sum(counts):
            return 0.0
        seen = [max(float(count), UNSEEN) for count in counts]
        pairs = sum(seen)
        frequencies = [count / pairs for count in seen]
        with0, with1 = (likeliest_with_mean(frequencies, score_of_elo(elo)) for elo in self)
        return pairs * sum(own * math.log(one / none) for own, one, none in zip(frequencies, with1, with0))

    def verdict(self, counts):
        """Whether the player is better; None as long as that is undecided."""
        ratio = self.ratio(counts)
        return False if ratio <= LOWER_BOUND else True if ratio >= UPPER_BOUND else None


def likeliest_with_mean(frequencies, mean):
    low, high = -1 / (1 - mean) + 1e-12, 1 / mean - 1e-12
    for _ in range(200):
        if high - low <= sys.float_info.epsilon:
            break
        middle = (low + high) / 2
        if sum(own * (i / 4 - mean) / (1 + middle * (i / 4 - mean)) for i, own in enumerate(frequencies)) > 0:
            low = middle
        else:
            high = middle
    return [own / (1 + low * (i / 4 - mean)) for i, own in enumerate(frequencies)]
