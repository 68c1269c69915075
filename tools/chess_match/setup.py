"""A player as the user describes it, in words with blanks between them:

    toga2 option.Hash=64 "option.Book File=none" name=Toga
    gnuchess --xboard init="memory 64"
    ../before/vorka protocol=xboard

Words that begin with one of the keys below are for the match, all others are the command.
"""

import re
import shlex
from typing import NamedTuple, Optional

from .errors import Trouble

# xboard1 is version 1 of XBoard's, which has no handshake.
PROTOCOLS = ("uci", "xboard", "xboard1")
KEY = re.compile(r"(name|protocol|folder|init|option\.([^=]+))=(.*)", re.S)


class Setup(NamedTuple):
    text: str  # as the user wrote it
    command: list
    name: str = ""  # "": what the program calls itself
    protocol: str = ""  # "": what the program answers to
    folder: Optional[str] = None  # where it runs; None: an empty folder of its own for each game
    options: tuple = ()  # of UCI: pairs of name and value
    init: tuple = ()  # lines of XBoard, sent before each game


def setup_of(text):
    """Trouble with what is wrong."""
    try:
        words = shlex.split(text)
    except ValueError as error:
        raise Trouble(f"player {text}: {error}".lower()) from None
    command, options, init, given = [], [], [], {}
    for word in words:
        key = KEY.fullmatch(word)
        if not key:
            command.append(word)
        elif key[2]:
            options.append((key[2], key[3]))
        elif key[1] == "init":
            init.append(key[3])
        elif not key[3]:
            raise Trouble(f"player {text}: nothing after {key[1]}=")
        else:
            given[key[1]] = key[3]
    if not command:
        raise Trouble(f'"{text}" names no program')
    if given.get("protocol", "uci") not in PROTOCOLS:
        raise Trouble(f"player {text}: protocol={given['protocol']} is none of {', '.join(PROTOCOLS)}")
    protocol = given.get("protocol", "")
    if options and init or options and protocol.startswith("xboard") or init and protocol == "uci":
        raise Trouble(f"player {text}: option. is for UCI, init for XBoard")
    return Setup(text, command, given.get("name", ""), protocol, given.get("folder"), tuple(options), tuple(init))
