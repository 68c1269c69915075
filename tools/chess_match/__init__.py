"""Games between chess programs: what tools/match, tools/lost_games and scripts/cross_table are made of.

| module | what it holds |
|---|---|
| options | the command line of tools/match |
| tournament | who plays whom, several games at a time, and what is told about them |
| game | one game: whose turn it is, what ends it |
| controls | time controls and clocks |
| adjudication | ends of games that both players agree about |
| player, xboard, uci | a program as a player, in either protocol |
| child | a program as a child process |
| setup | a player as the user describes it: command, options, name, protocol |
| openings | where games begin |
| scores | the scores that players tell, and their form in PGN |
| pgn | games written and read |
| statistics, standing | what results say about strength, and the line that tells it |
| state_file | games kept, so that a match can go on |
| ratings | ratings of players who have played each other, for scripts/cross_table |
| losses | where lost games turned, for tools/lost_games |
| referee | the rules of chess |
"""
