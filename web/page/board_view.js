// The board on the page: the library's, with the moves that the rules allow, the promotion choice, marks, and a cursor
// for the keyboard.

import { BORDER_TYPE, Chessboard, COLOR, INPUT_EVENT_TYPE } from './board/src/Chessboard.js';
import { Markers, MARKER_TYPE } from './board/src/extensions/markers/Markers.js';
import { cancelPromotion, choosePromotion } from './promotion.js';

const marks = {
  last: { class: 'marker-last', slice: 'markerSquare' },
  why: { class: 'marker-why', slice: 'markerSquare' },
  whyBlack: { class: 'marker-why-black', slice: 'markerSquare' },
  check: { class: 'marker-check', slice: 'markerCircleFilled' },
  cursor: { class: 'marker-cursor', slice: 'markerFrame' },
  taken: { class: 'marker-taken', slice: 'markerSquare' },
};
const pieceNames = { p: 'pawn', n: 'knight', b: 'bishop', r: 'rook', q: 'queen', k: 'king' };

export class BoardView {
  /** `onMove` is told the move that somebody has made on the board, as UCI writes it. `say` speaks to a screen reader. */
  constructor(element, game, { onMove, say }) {
    this.game = game;
    this.onMove = onMove;
    this.say = say;
    this.cursor = 'e2';
    this.picked = null;
    this.board = new Chessboard(element, {
      assetsUrl: './board/assets/',
      style: { borderType: BORDER_TYPE.none, showCoordinates: true, pieces: { file: 'pieces/standard.svg' },
        animationDuration: matchMedia('(prefers-reduced-motion: reduce)').matches ? 0 : 180 },
      extensions: [{ class: Markers, props: { autoMarkers: marks.taken } }],
    });
    this.element = element;
    element.addEventListener('keydown', (event) => this.key(event));
    element.addEventListener('focus', () => {
      if (!element.matches(':focus-visible')) return;
      this.showCursor();
      this.say(this.contentOf(this.cursor));
    });
    element.addEventListener('blur', () => this.board.removeMarkers(marks.cursor));
  }

  get orientation() { return this.board.getOrientation(); }
  async flip() { await this.turnTo(this.orientation === COLOR.white ? 'black' : 'white'); }

  /** The library turns once at a time. */
  async turnTo(side) {
    const colour = side === 'white' ? COLOR.white : COLOR.black;
    this.turned = (this.turned ?? Promise.resolve())
      .then(() => (colour === this.orientation ? undefined : this.board.setOrientation(colour)));
    await this.turned;
  }

  /** Shows the game's position. `side` may move: 'white', 'black', or null for nobody. */
  async show(side) {
    const { state, lastMove } = this.game;
    this.board.disableMoveInput();
    this.picked = this.made = null;
    this.board.removeLegalMovesMarkers();
    for (const mark of [marks.last, marks.check, marks.taken]) this.board.removeMarkers(mark);
    if (lastMove) for (const at of [0, 2]) this.board.addMarker(marks.last, lastMove.slice(at, at + 2));
    const moved = this.board.setPosition(state.fen, true);
    if (state.isCheck) this.board.addMarker(marks.check, this.squareOf(state.fen, state.side === 'white' ? 'K' : 'k'));
    this.side = side;
    if (!side) cancelPromotion();
    if (side) this.board.enableMoveInput((event) => this.input(event), side === 'white' ? COLOR.white : COLOR.black);
    await moved;
  }

  squareOf(fen, letter) {
    const rows = fen.split(' ')[0].replace(/\d/g, (digit) => '.'.repeat(Number(digit))).split('/');
    const row = rows.findIndex((text) => text.includes(letter));
    return 'abcdefgh'[rows[row].indexOf(letter)] + (8 - row);
  }

  input(event) {
    if (event.type === INPUT_EVENT_TYPE.moveInputStarted) {
      const moves = this.game.legalFrom(event.squareFrom);
      this.showLegal(moves);
      return moves.length > 0;
    }
    if (event.type === INPUT_EVENT_TYPE.validateMoveInput) {
      const moves = this.game.legalFrom(event.squareFrom).filter(({ uci }) => uci.slice(2, 4) === event.squareTo);
      if (!moves.length) return false;
      this.made = moves;
      return true;
    }
    if (event.type === INPUT_EVENT_TYPE.moveInputCanceled || event.type === INPUT_EVENT_TYPE.moveInputFinished) {
      this.board.removeLegalMovesMarkers();
      this.board.removeMarkers(marks.taken);
      // The library has put the piece down now, and may be told of another position.
      if (this.made) setTimeout((moves) => this.choose(moves), 0, this.made);
      this.made = null;
    }
    return true;
  }

  /** Nobody may move until the next position is shown, or choose what a pawn becomes. */
  lock() {
    this.side = null;
    cancelPromotion();
    this.board.disableMoveInput();
  }

  showLegal(moves) {
    this.board.removeLegalMovesMarkers();
    this.board.addLegalMovesMarkers(moves.map(({ uci }) => ({ to: uci.slice(2, 4), promotion: uci[4] })));
  }

  /** Plays the one move of those, or lets the player choose what the pawn becomes. */
  async choose(moves) {
    const uci = moves.length === 1 ? moves[0].uci : await choosePromotion(this.game.state.side, moves);
    if (!uci || !this.side) {
      this.show(this.side);
      return;
    }
    this.lock();
    this.onMove(uci);
  }

  /** Lights squares for the panel that says why, each with its side: [square, 'white']. The last ones go dark. */
  light(squares) {
    this.board.removeMarkers(marks.why);
    this.board.removeMarkers(marks.whyBlack);
    for (const text of new Set(squares.map((pair) => pair.join()))) {
      const [square, side] = text.split(',');
      this.board.addMarker(side === 'white' ? marks.why : marks.whyBlack, square);
    }
  }

  // --- Keyboard ---

  showCursor() {
    this.board.removeMarkers(marks.cursor);
    this.board.addMarker(marks.cursor, this.cursor);
  }

  contentOf(square) {
    const piece = this.board.getPiece(square);
    return piece ? `${square}, ${piece[0] === 'w' ? 'white' : 'black'} ${pieceNames[piece[1]]}` : `${square}, empty`;
  }

  key(event) {
    if (event.altKey || event.ctrlKey || event.metaKey) return;  // the browser's own
    const steps = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, 1], ArrowDown: [0, -1] };
    if (steps[event.key]) {
      const turned = this.orientation === COLOR.white ? 1 : -1;
      const clamp = (index) => Math.min(Math.max(index, 0), 7);
      const [x, y] = steps[event.key].map((step) => step * turned);
      this.cursor = 'abcdefgh'[clamp('abcdefgh'.indexOf(this.cursor[0]) + x)] + (clamp(Number(this.cursor[1]) - 1 + y) + 1);
      this.showCursor();
      this.say(this.contentOf(this.cursor));
    } else if (event.key === 'Enter' || event.key === ' ') {
      this.press();
    } else if (event.key === 'Escape') {
      this.putBack();
    } else {
      return;
    }
    event.preventDefault();
  }

  putBack() {
    this.picked = null;
    this.board.removeLegalMovesMarkers();
    this.board.removeMarkers(marks.taken);
  }

  press() {
    const moves = this.picked && this.game.legalFrom(this.picked).filter(({ uci }) => uci.slice(2, 4) === this.cursor);
    if (moves?.length) {
      this.putBack();
      this.choose(moves);
      return;
    }
    this.putBack();
    if (!this.side || this.game.state.side !== this.side) {
      this.say('It is not your move.');
      return;
    }
    const from = this.game.legalFrom(this.cursor);
    if (!from.length) {
      this.say(`${this.contentOf(this.cursor)}: no move from here.`);
      return;
    }
    this.picked = this.cursor;
    this.board.addMarker(marks.taken, this.cursor);
    this.showLegal(from);
    this.say(`${this.contentOf(this.cursor)} picked up, it can go to ${from.map(({ uci }) => uci.slice(2, 4)).join(', ')}.`);
  }
}
