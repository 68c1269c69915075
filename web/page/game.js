// The game: its start, its moves, where one looks at it, and what the searches have said of its positions. All that the
// rules say comes from the desk; `state` is its answer for the position that is looked at.

import { plainPgn } from './plain_pgn.js';

export class Game extends EventTarget {
  constructor(desk) {
    super();
    this.desk = desk;
    this.reset();
  }

  reset(fen = '', moves = []) {
    this.fen = fen;
    this.moves = moves;
    this.shown = moves.length;  // so many moves are on the board
    this.scores = [];           // by the number of moves before them; centipawns, as White sees them
    this.ended = null;          // a result that the board doesn't know: { result, reason }
    this.names = { white: '?', black: '?' };
  }

  get atEnd() { return this.shown === this.moves.length; }
  get isOver() { return this.atEnd && (this.ended !== null || this.state.isOver); }
  get lastMove() { return this.moves[this.shown - 1] ?? null; }
  get position() { return { fen: this.fen, moves: this.moves.slice(0, this.shown) }; }
  get lines() { return [this.fen, this.position.moves.join(' ')]; }

  /** Asks the desk for the position that is shown, and tells everybody. */
  async refresh() {
    const [state, whole] = await Promise.all([
      this.desk.ask('game', ...this.lines), this.desk.ask('game', this.fen, this.moves.join(' '))]);
    this.state = state;
    this.notation = whole.notation;
    this.firstPly = whole.error ? 0 : firstPly(whole.fen, this.moves.length);
    this.dispatchEvent(new Event('change'));
  }

  legalFrom(square) { return this.state.legal.filter(({ uci }) => uci.startsWith(square)); }

  /** A move as one types it: e2e4, Nf3, 0-0; undefined if it fits no legal move, or several. */
  findMove(text) {
    const plain = (move) => move.replace(/[+#x=!?-]/g, '').replace(/0/g, 'O').toLowerCase();
    const exact = this.state.legal.filter(({ san, uci }) => san === text || uci === text);
    const found = exact.length ? exact
      : this.state.legal.filter(({ san, uci }) => plain(san) === plain(text) || uci === plain(text) || uci === `${plain(text)}q`);
    return found.length === 1 ? found[0] : undefined;
  }

  async play(uci) {
    this.moves = [...this.position.moves, uci];
    this.ended = null;
    this.scores.length = Math.min(this.scores.length, this.moves.length);
    this.shown = this.moves.length;
    await this.refresh();
  }

  async takeBack(count) {
    this.moves.length = Math.max(this.moves.length - count, 0);
    this.shown = this.moves.length;
    this.scores.length = Math.min(this.scores.length, this.moves.length + 1);
    this.ended = null;
    await this.refresh();
  }

  async show(count) {
    this.shown = Math.min(Math.max(count, 0), this.moves.length);
    await this.refresh();
  }

  end(result, reason) { this.ended = { result, reason }; }

  get result() { return this.ended?.result ?? this.state.result; }
  get reason() { return this.ended?.reason ?? this.state.reason; }

  /** Whether the text is a position; the game begins there. */
  async loadFen(fen) {
    const answer = await this.desk.ask('game', fen, '');
    if (answer.error) return false;
    this.reset(fen.trim());
    await this.refresh();
    return true;
  }

  /** What is wrong with the text; nothing if it is a game, which stands on the board now. */
  async loadPgn(text) {
    const answer = await this.desk.ask('read_pgn', plainPgn(text));
    if (answer.error) return answer.error;
    this.reset(answer.fen, answer.moves);
    this.names = { white: answer.white, black: answer.black };
    await this.refresh();
    if (answer.result !== '*' && !this.state.isOver) this.end(answer.result, 'as the text says');
    return null;
  }

  async pgn() {
    const now = new Date();
    const date = [now.getFullYear(), now.getMonth() + 1, now.getDate()].map((part) => String(part).padStart(2, '0'));
    const answer = await this.desk.ask('write_pgn', this.fen, this.moves.join(' '), this.result, 'event Game in the browser',
      'site ?', `date ${date.join('.')}`, `white ${this.names.white}`, `black ${this.names.black}`);
    return answer.pgn;
  }
}

/** The number of half moves before the game's first one, from the position after all of them. */
function firstPly(fen, moves) {
  const words = fen.split(' ');
  return 2 * (Number(words[5]) - 1) + (words[1] === 'b' ? 1 : 0) - moves;
}
