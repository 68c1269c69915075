"""Where a player's lost games turned, by its own scores.

A lost game turns at the loser's last move with a score of no less than the limit: from its next move on it knew that it
was worse. The way down goes from there to its first score that is beyond hope, or to the end. The largest fall from one
of its moves to the next on that way is the size of the fall; it is sudden if it is large enough, and then the loser was
out-calculated, and slow if not: then it was outplayed. The phase is that of the position where the game turned.
"""

import re
from typing import NamedTuple, Optional

from .pgn import read_games
from .referee import rules

PHASES = ("opening", "middle game", "ending")
OUTLOOKS = ("from its first score on", "never")  # of games that didn't turn: it was worse all the time, or saw nothing
# Scores beyond this are all the same: won or lost. Centipawns.
UTMOST = 1000
VALUES = {"q": 9, "r": 5, "b": 3, "n": 3}


class Criteria(NamedTuple):
    """Scores in centipawns."""
    limit: int = -50
    hopeless: int = -300
    sudden: int = 80
    opening_moves: int = 12  # an opening lasts so many moves at most
    ending_material: int = 26  # an ending has no more than this, queens 9, rooks 5, bishops and knights 3, of both sides


class Loss(NamedTuple):
    game: int  # among all that were read, from 1
    round: str
    opponent: str
    phase: str  # of PHASES, or of OUTLOOKS
    move: int = 0  # the number of the move at which it turned
    san: str = ""
    before: Optional[int] = None  # the score of that move
    after: Optional[int] = None  # and of the next one
    fall: int = 0  # the largest on the way down
    is_sudden: bool = False
    fall_move: int = 0  # the number of the move that showed it
    termination: str = ""


class Tally(NamedTuple):
    """What was read of one player."""
    losses: list
    games: int
    lost: int
    without_scores: int  # of the lost ones


def player_names(games):
    return sorted({game.tags.get(colour, "?") for game in games for colour in ("White", "Black")})


def losses_of(games, player, criteria):
    """Of the games in which this player, by its whole name, has one of the colours."""
    losses, played, lost, without_scores = [], 0, 0, 0
    for number, game in enumerate(games, 1):
        for colour, loss in (("White", "0-1"), ("Black", "1-0")):
            if game.tags.get(colour) != player:
                continue
            played += 1
            if game.result == loss:
                lost += 1
                try:
                    found = loss_of(number, game, colour == "White", criteria)
                except ValueError as error:
                    raise ValueError(f"game {number}: {error}") from None
                losses += [found] if found else []
                without_scores += not found
    return Tally(losses, played, lost, without_scores)


def loss_of(number, game, white, criteria):
    """None if the loser told no scores. ValueError for a move that isn't one."""
    start = rules.Position.from_fen(game.tags.get("FEN", rules.START))
    own = [ply for ply, move in enumerate(game.moves)
           if move.score is not None and (ply % 2 == 0) == (start.white_to_move == white)]
    if not own:
        return None
    scores = [max(-UTMOST, min(UTMOST, game.moves[ply].score)) for ply in own]
    opponent = game.tags.get("Black" if white else "White", "?")
    kept = [i for i, score in enumerate(scores) if score >= criteria.limit]
    if not kept or kept[-1] == len(scores) - 1:
        return Loss(number, game.tags.get("Round", "?"), opponent, OUTLOOKS[bool(kept)],
                    termination=game.tags.get("Termination", "?"))
    turn = kept[-1]
    end = next((i for i in range(turn + 1, len(scores)) if scores[i] <= criteria.hopeless), len(scores) - 1)
    fall, earliest = max((scores[i] - scores[i + 1], -i) for i in range(turn, end))
    fen = game.tags.get("FEN", rules.START)
    move, fall_move = (move_number(fen, own[i]) for i in (turn, 1 - earliest))
    phase = phase_of(position_before(start, game.moves, own[turn]), move, criteria)
    return Loss(number, game.tags.get("Round", "?"), opponent, phase, move, game.moves[own[turn]].san, scores[turn],
                scores[turn + 1], fall, fall >= criteria.sudden, fall_move, game.tags.get("Termination", "?"))


def position_before(position, moves, ply):
    for move in moves[:ply]:
        position = position.make(position.find(re.sub("[!?]+$", "", move.san)))
    return position


def move_number(fen, ply):
    fields = fen.split()
    first = int(fields[5]) if len(fields) > 5 else 1
    return first + (ply + (fields[1] == "b")) // 2


def phase_of(position, move, criteria):
    material = sum(VALUES.get(man.lower(), 0) for man in position.men)
    if material <= criteria.ending_material:
        return "ending"
    return "opening" if move <= criteria.opening_moves else "middle game"


# --- What is told ---

def pawns(score):
    return f"{score / 100:+.2f}"


def table(tally, player, criteria):
    """A Markdown table with a line above it."""
    turned = [loss for loss in tally.losses if loss.phase in PHASES]
    lines = [f"{player} lost {tally.lost} of {tally.games} games. A game turned at its last score of "
             f"{pawns(criteria.limit)} or more; a fall is sudden from {criteria.sudden / 100:.2f} on in one move.", "",
             "| phase | games | mean fall | sudden | slow |", "|---|---|---|---|---|"]
    lines += [row(phase, [loss for loss in turned if loss.phase == phase]) for phase in PHASES]
    lines.append(row("all that turned", turned))
    for outlook, text in zip(OUTLOOKS, (f"below {pawns(criteria.limit)} from the first score on",
                                        f"never below {pawns(criteria.limit)}")):
        lines.append(f"| {text} | {sum(loss.phase == outlook for loss in tally.losses)} | | | |")
    if tally.without_scores:
        lines.append(f"| without scores | {tally.without_scores} | | | |")
    return "\n".join(lines)


def row(name, losses):
    if not losses:
        return f"| {name} | 0 | | | |"
    sudden = sum(loss.is_sudden for loss in losses)
    mean = sum(loss.fall for loss in losses) / len(losses) / 100
    return f"| {name} | {len(losses)} | {mean:.2f} | {sudden} | {len(losses) - sudden} |"


def examples(tally, count):
    """The largest falls of each phase and each kind, where to look first, and the losses that were never seen."""
    lines = []
    for phase in PHASES:
        for is_sudden, kind in ((True, "sudden"), (False, "slow")):
            losses = [loss for loss in tally.losses if loss.phase == phase and loss.is_sudden == is_sudden]
            losses.sort(key=lambda loss: (-loss.fall, loss.game))
            for loss in losses[:count]:
                lines.append(f"{phase}, {kind}: game {loss.game} (round {loss.round}, against {loss.opponent}), at move "
                             f"{loss.move} {loss.san} {pawns(loss.before)}, then {pawns(loss.after)}; largest fall "
                             f"{loss.fall / 100:.2f}, at move {loss.fall_move}")
    unseen = [loss for loss in tally.losses if loss.phase == "never"]
    return lines + [f"never: game {loss.game} (round {loss.round}, against {loss.opponent}), {loss.termination}"
                    for loss in unseen[:count]]


def read_file(path):
    """ValueError if there are no games in it."""
    games = read_games(path.read_text(encoding="utf-8-sig", errors="replace"))
    if not any("White" in game.tags or "Black" in game.tags for game in games):
        raise ValueError(f"{path}: no games in PGN")
    return games
