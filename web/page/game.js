// The game: its start, its moves, where one looks at it, and what the searches have said of its positions. All that the
// rules say comes from the desk: `state` is its answer for the position that is looked at, `final` the one for the last
// position. A game changes at once, when the desk has answered.

import { plainText, readPgn } from './pgn_reader.js';

const respelt = { 'Fifthy move rule': 'Fifty-move rule' };  // the engine's word is older than this page
const ownTags = ['Result', 'SetUp', 'FEN'];  // the desk writes them itself

export class Game extends EventTarget {
  constructor(desk) {
    super();
    this.desk = desk;
    Object.assign(this, fresh());
  }

  get atEnd() { return this.shown === this.moves.length; }
  /** Whether the game has come to its end, wherever one looks at it. */
  get hasEnded() { return this.ended !== null || this.final.isOver; }
  get isOver() { return this.atEnd && this.hasEnded; }
  /** Whether there is nothing to search where one looks. A draw by rule counts where the game ends alone. */
  get isDecided() { return !this.state.legal.length || (this.atEnd && this.state.isOver); }
  /** { result, reason }. The text of a game outranks a rule that its players may have overlooked; mate and stalemate
   *  outrank the text. */
  get ending() {
    const { final, ended } = this;
    return final.isOver && (!ended || !final.legal.length || ended.result === final.result) ? final : ended;
  }
  get result() { return this.ending?.result ?? '*'; }
  get reason() {
    const reason = this.ending?.reason ?? '';
    return respelt[reason] ?? reason;
  }
  get lastMove() { return this.moves[this.shown - 1] ?? null; }
  get position() { return { fen: this.fen, moves: this.moves.slice(0, this.shown) }; }
  get lines() { return [this.fen, this.position.moves.join(' ')]; }

  /** Takes what is given of a game, asks the desk about it and tells everybody. False, and no change, if it is none. */
  async change(given) {
    const { fen, moves, shown } = { ...this, ...given };
    const question = (count) => this.desk.ask('game', fen, moves.slice(0, count).join(' '));
    const final = question(moves.length);
    const [last, state] = await Promise.all([final, shown === moves.length ? final : question(shown)]);
    if (last.error) return false;
    Object.assign(this, given, { state, final: last, notation: last.notation, firstPly: firstPly(last.fen, moves.length) });
    this.dispatchEvent(new Event('change'));
    return true;
  }

  begin(names) { return this.change({ ...fresh(), tags: tagsOf(names) }); }

  legalFrom(square) { return this.state.legal.filter(({ uci }) => uci.startsWith(square)); }

  /** The moves that fit what somebody types: e2e4, Nf3, 0-0. One of them is the move, several are too many. */
  findMoves(text) {
    const { legal } = this.state;
    const exact = legal.filter(({ san, uci }) => san === text || uci === text);
    if (exact.length) return exact;
    const plain = (move) => move.replace(/[+#x=!?-]/g, '').replace(/0/g, 'O').toLowerCase();
    // A capital letter names a piece: Bc4 is never the pawn's bxc4.
    const isNamed = /^[NBRQK]/.test(text);
    const alike = legal.filter(({ san, uci }) => (plain(san) === plain(text) && (!isNamed || san[0] === text[0])) || uci === plain(text) || uci === `${plain(text)}q`);
    if (alike.length) return alike;
    // A piece may be named with more or less of its square than it needs.
    const [, piece, file, rank, to] = /^([NBRQK])([a-h]?)([1-8]?)[x-]?([a-h][1-8])[+#!?]*$/.exec(text) ?? [];
    return piece ? legal.filter(({ san, uci }) => san[0] === piece && uci[0].includes(file) && uci[1].includes(rank)
      && uci.slice(2) === to) : [];
  }

  /** The move is played after the first `count` ones; what followed them is forgotten. */
  play(uci, count) {
    return this.change({ moves: [...this.moves.slice(0, count), uci], shown: count + 1, ended: null,
      scores: this.scores.slice(0, count + 1) });
  }

  /** From the last move on. */
  takeBack(count) {
    const left = Math.max(this.moves.length - count, 0);
    return this.change({ moves: this.moves.slice(0, left), shown: left, ended: null, scores: this.scores.slice(0, left + 1) });
  }

  show(count) { return this.change({ shown: Math.min(Math.max(count, 0), this.moves.length) }); }
  showLast() { return this.show(this.moves.length); }

  /** A result that the board doesn't know. */
  end(result, reason) { if (!this.hasEnded) this.ended = { result, reason }; }

  /** Who plays, for the text of the game. A game that was read keeps its names. */
  name(names) { if (!this.wasRead) this.tags = tagsOf(names, this.tags); }

  // --- Text ---

  /** Whether the text is a position; the game begins there. */
  loadFen(fen, names) { return this.change({ ...fresh(), fen: fen.trim(), tags: tagsOf(names) }); }

  /** What is wrong with the text; nothing if it is a game, which stands on the board now. */
  async loadPgn(text) {
    const read = readPgn(text);
    if (!read.tags.length && !read.moves.length) return 'unreadable_game';
    const { error, fen, moves, result } = await this.desk.ask('read_pgn', plainText(read));
    if (error) return error;
    const ended = result === '*' ? null : { result, reason: 'as the text says' };
    await this.change({ ...fresh(), fen, moves, shown: moves.length, ended, wasRead: true,
      tags: read.tags.filter(([name]) => !ownTags.includes(name)) });
    return null;
  }

  async pgn() {
    const tags = this.tags.map(([name, value]) => `${name} ${value}`);
    const { pgn } = await this.desk.ask('write_pgn', this.fen, this.moves.join(' '), this.result, ...tags);
    return pgn;
  }

  // --- From visit to visit ---

  get kept() {
    const { fen, moves, scores, ended, tags, wasRead } = this;
    return { fen, moves, scores, ended, tags, wasRead };
  }

  /** Whether what was kept is a game still; it stands on the board now, at its last move. */
  restore({ fen, moves, scores, ended, tags, wasRead }) {
    return this.change({ fen, moves, shown: moves.length, scores: scores.map((score) => score ?? undefined), ended, tags, wasRead });
  }
}

/** A game without a move. */
function fresh() {
  return { fen: '', moves: [],
    shown: 0,        // so many moves are on the board
    scores: [],      // by the number of moves before them; centipawns, as White sees them
    ended: null,     // a result that the board doesn't know: { result, reason }
    tags: [],        // of its text: pairs of name and value
    wasRead: false,  // from a text, whose tags it keeps
  };
}

/** The tags of a game on this page, from its day; the others that are given are kept. */
function tagsOf({ white, black }, given = []) {
  const now = new Date();
  const date = [now.getFullYear(), now.getMonth() + 1, now.getDate()].map((part) => String(part).padStart(2, '0')).join('.');
  return [...new Map([['Event', 'Game in the browser'], ['Site', '?'], ['Date', date], ...given, ['White', white], ['Black', black]])];
}

/** The number of half moves before the game's first one, from the position after all of them. */
function firstPly(fen, moves) {
  const words = fen.split(' ');
  return 2 * (Number(words[5]) - 1) + (words[1] === 'b' ? 1 : 0) - moves;
}
