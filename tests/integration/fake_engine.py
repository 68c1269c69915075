"""A chess program for the tests of tools/match: it plays the first legal move by name, and misbehaves when told to.

    fake_engine.py uci|xboard|xboard1|mute [die|hang|illegal|late|resign|claim=RESULT|refuse=MOVE] [at=N] [deaf] [score=N]
                   [ponder=MOVE] [log=FILE]

At its move number N (1) it does what the word says. One that is deaf overlooks its first greeting. `score` are the
centipawns that it tells from that move on, `ponder` is what it expects, and `log` keeps what it was told.
"""

import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts" / "lib"))
import rules  # noqa: E402

UCI_OPTIONS = ("option name Hash type spin default 16 min 1 max 64", "option name Book File type string default",
               "option name OwnBook type check default false", "option name Clear Hash type button",
               "option name UCI_LimitStrength type check default false", "option name UCI_Elo type spin default 1500 min 1 max 4000",
               "option name Play Style type combo default Solid var Solid var Very Sharp var Risky")
FEATURES = ('feature done=0 myname="Fake of XBoard" ping=1 setboard=1 usermove=1', "feature san=1 sigint=0 time=1", "feature done=1")


class Fake:
    def __init__(self, words):
        self.protocol = words[0]
        self.words = dict(word.partition("=")[::2] for word in words[1:])
        self.at = int(self.words.get("at", 1))
        self.made = 0
        self.forced = False
        self.new_game("startpos")

    def new_game(self, fen):
        self.position = rules.Position.from_fen(rules.START if fen == "startpos" else fen)

    def make(self, text):
        self.position = self.position.make(self.position.find(text))

    def say(self, text):
        print(text, flush=True)

    def think(self):
        """The move, or what it does instead."""
        self.made += 1
        due = self.made == self.at
        if due and "die" in self.words:
            print("out of coffee", file=sys.stderr)
            sys.exit(3)
        if due and "hang" in self.words:
            time.sleep(1000)
        if due and "late" in self.words:
            time.sleep(float(self.words["late"]))
        if due and "resign" in self.words:
            return self.say("resign")
        if due and "claim" in self.words:
            return self.say(self.words["claim"] + " {so it claims}")
        score = int(self.words.get("score", 0)) if self.made >= self.at else 7
        if self.protocol == "uci":
            self.say(f"info depth 3 seldepth 9 score cp {score} nodes 100 time 1 pv e2e4")
            self.say("info depth 4 multipv 2 score cp -900")
        else:
            self.say(f"3 {score} 1 100 e2e4")
        move = sorted(map(rules.coordinate, self.position.legal_moves()))[0]
        self.make(move)
        if due and "illegal" in self.words:
            move = "a1h8"
        self.say(("bestmove " if self.protocol == "uci" else "move ") + move +
                 (" ponder " + self.words["ponder"] if "ponder" in self.words else ""))

    def hear_uci(self, word, rest):
        if word == "uci":
            self.say("id name Fake of UCI")
            for option in UCI_OPTIONS:
                self.say(option)
            self.say("uciok")
        elif word == "isready":
            self.say("readyok")
        elif word == "position":
            start, _, moves = rest.partition(" moves ")
            self.new_game(start.removeprefix("fen "))
            for move in moves.split():
                self.make(move)
        elif word == "go" and not rest.startswith("ponder"):
            self.think()
        elif word in ("ponderhit", "stop"):
            self.think()

    def hear_xboard(self, word, rest):
        if word == "protover" and "deaf" in self.words:
            del self.words["deaf"]
        elif word == "protover" and self.protocol == "xboard":
            for feature in FEATURES:
                self.say(feature)
        elif word == "ping":
            self.say("pong " + rest)
        elif word == "new":
            self.new_game("startpos")
            self.forced = False
        elif word == "force":
            self.forced = True
        elif word == "setboard":
            self.new_game(rest)
        elif word == "go":
            self.forced = False
            self.think()
        elif word == "usermove" or self.protocol == "xboard1" and len(word) in (4, 5) and word[1].isdigit() and word[3].isdigit():
            move = rest or word
            if self.words.get("refuse") == move:
                return self.say("Illegal move: " + move)
            self.make(move)
            if not self.forced:
                self.think()

    def run(self):
        log = open(self.words["log"], "a", buffering=1) if "log" in self.words else None
        for line in sys.stdin:
            if log:
                log.write(line)
            word, _, rest = line.strip().partition(" ")
            if word == "quit":
                return
            if self.protocol == "uci":
                self.hear_uci(word, rest)
            elif self.protocol != "mute":
                self.hear_xboard(word, rest)


if __name__ == "__main__":
    Fake(sys.argv[1:]).run()
