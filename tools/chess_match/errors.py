"""What can go wrong."""


class Trouble(Exception):
    """The match can't be played, or not go on. The text is for the user."""


class Forfeit(Exception):
    """A player has lost the game by what it did or didn't do; the text goes on after its colour: "lost on time"."""


class Stopped(Exception):
    """The user wants the match to end."""
