"""The games of a match in PGN, added to what stands in a file: no game is ever lost."""

from .errors import Trouble

# Characters: long enough to tell one game from another, mostly; so few places have to be compared to the end.
HEAD = 200


class PgnFile:
    def __init__(self, path, known):
        """Opens the file, or makes it, and adds the games of `known`, those of this match that were played before. As many
        of them as the file ends with are there already; the last of these may have been cut off, and is completed.
        Trouble if it is no regular file, or can't be read or written."""
        self.path = path
        if path.exists() and not path.is_file():
            raise Trouble(f"can't write {path}: no regular file")
        try:
            self.file = open(path, "a+b")
            self.file.seek(0)
            kept = self.file.read()
        except OSError as error:
            raise Trouble(f"can't write {path}: {error.strerror}") from None
        known = known.encode()
        self.write(known[length_kept(kept, known):])

    def add(self, games):
        self.write(games.encode())

    def write(self, data):
        try:
            self.file.write(data)
            self.file.flush()
        except OSError as error:
            raise Trouble(f"can't write {self.path}: {error.strerror}") from None


def length_kept(kept, known):
    """How much of the beginning of `known` the end of `kept` already has; all of it, if more follows after it."""
    head = known[:HEAD]
    if not head:
        return 0
    at = kept.find(head)
    while at >= 0:
        end = kept[at:]
        if known.startswith(end) or end.startswith(known):
            return min(len(end), len(known))
        at = kept.find(head, at + 1)
    return next((length for length in range(min(len(head), len(kept)), 0, -1) if kept.endswith(head[:length])), 0)
