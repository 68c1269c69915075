"""How a match stands, in the words of tools/selfplay."""

from .statistics import LOWER_BOUND, UPPER_BOUND, strength_of

HALF_POINTS = {"1-0": 2, "1/2-1/2": 1, "0-1": 0}


def half_points_of_first(result, first_has_white):
    points = HALF_POINTS[result]
    return points if first_has_white else 2 - points


class Standing:
    """Results of two players. Games 2k and 2k + 1 are pair k: the same opening, the first player with White in the first
    of the two. A pair counts in the line of results once it is whole and all before it are, so that the line doesn't
    depend on which game ends first; none counts any more once the test, if there is one, is decided."""

    def __init__(self, test=None):
        self.test = test  # Sprt
        self.verdict = None  # of the test
        self.waiting = {}  # half points by game
        self.next_pair = 0
        self.pairs = [0] * 5
        self.games = {2: 0, 1: 0, 0: 0}

    def take(self, game, result):
        """A game that has not been taken yet."""
        self.waiting[game] = half_points_of_first(result, game % 2 == 0)
        while self.verdict is None:
            both = 2 * self.next_pair, 2 * self.next_pair + 1
            if not all(game in self.waiting for game in both):
                return
            points = [self.waiting.pop(game) for game in both]
            self.pairs[sum(points)] += 1
            for half_points in points:
                self.games[half_points] += 1
            self.next_pair += 1
            if self.test:
                self.verdict = self.test.verdict(self.pairs)

    def line(self):
        """The line of results; games that wait for others are told after it."""
        text = f"games {sum(self.games.values())}: " + wins_draws_losses(self.games)
        if self.next_pair:
            strength = strength_of(self.pairs)
            text += (f", pairs {' '.join(map(str, self.pairs))}, Elo {with_error(strength.elo)}, normalized "
                     f"{with_error(strength.normalized_elo)}, superiority {100 * strength.superiority:.1f} %")
            if self.test:
                text += (f", LLR {self.test.ratio(self.pairs):.2f} ({LOWER_BOUND:.2f} to {UPPER_BOUND:.2f}) for "
                         f"{self.test.elo0:g} and {self.test.elo1:g} Elo")
        if self.waiting:
            games = {points: list(self.waiting.values()).count(points) for points in (2, 1, 0)}
            text += f"; not in pairs yet: {wins_draws_losses(games)}"
        return text

    def decision(self):
        """What the test has found; "" as long as it has found nothing."""
        if self.verdict is None:
            return ""
        nots = ("not ", "") if self.verdict else ("", "not ")
        return f"decided: the lead is {nots[0]}{self.test.elo0:g}, it is {nots[1]}{self.test.elo1:g} Elo"


def wins_draws_losses(games):
    return f"+{games[2]} ={games[1]} -{games[0]}"


def with_error(measured):
    if measured is None:
        return "?"
    # A value that is shown as 0 has no sign of its own.
    value = 0.0 if abs(measured.value) < 0.05 else measured.value
    return f"{value:+.1f} +- " + ("?" if measured.error is None else f"{measured.error:.1f}")
