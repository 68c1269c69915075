// Looks at every position of a game for a moment, so that the graph shows where it turned.

const limits = 'nodes 60000';
const decided = { '1-0': 29999, '0-1': -29999 };

/** `isOn` is asked before each position whether the review goes on; `told` hears how many moves are looked at. */
export async function reviewGame({ game, desk, searcher, search, isOn, told }) {
  const { fen, moves, scores } = game;
  for (let ply = 0; ply <= moves.length && isOn(); ply += 1) {
    told(ply);
    const position = { fen, moves: moves.slice(0, ply) };
    const state = await desk.ask('game', fen, position.moves.join(' '));
    if (!isOn()) return;
    if (!state.legal.length || (state.isOver && ply === moves.length)) {
      scores[ply] = decided[state.result] ?? 0;
    } else {
      search.reset(position, state.side);
      await searcher.think(position, limits, (line) => search.tell(line));
      if (search.score !== undefined && isOn()) scores[ply] = search.score;
    }
  }
}
