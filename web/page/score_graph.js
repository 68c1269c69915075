// The score over the game: a line from move to move, and a mark where the game turned. What stands up is good for White.

import { element, renew, shape } from './elements.js';
import { expectation, scoreText } from './info_line.js';
import { moveText } from './move_list.js';

const width = 320;
const height = 96;
const leastTurn = 0.2;  // of the way from a draw to a win; what is less turns nothing

export class ScoreGraph {
  /** `show` is called with a number of moves when somebody points at it, or goes along it by keyboard. */
  constructor(parent, show) {
    this.show = show;
    this.picture = shape('svg', { viewBox: `0 0 ${width} ${height}`, role: 'slider', tabindex: 0, 'aria-valuemin': 0 });
    this.words = element('div', {});
    parent.replaceChildren(this.picture, this.words);
    this.picture.addEventListener('click', (event) => {
      const box = this.picture.getBoundingClientRect();
      this.show(Math.round(((event.clientX - box.left) / box.width * width - 4) / (width - 8) * this.count));
    });
    this.picture.addEventListener('keydown', (event) => this.key(event));
  }

  key(event) {
    const places = { ArrowLeft: this.shown - 1, ArrowDown: this.shown - 1, ArrowRight: this.shown + 1, ArrowUp: this.shown + 1,
      Home: 0, End: this.count };
    if (!(event.key in places) || event.altKey || event.ctrlKey || event.metaKey) return;
    event.preventDefault();
    this.show(places[event.key]);
  }

  draw(game) {
    const count = game.moves.length;
    Object.assign(this, { count, shown: game.shown });
    const x = (ply) => (count ? (ply / count) * (width - 8) + 4 : 4);
    const y = (score) => (1 - expectation(score)) * (height / 2 - 4) + 4;
    const known = [...Array(count + 1).keys()].filter((ply) => game.scores[ply] !== undefined);
    const parts = [shape('rect', { class: 'graph-white', x: 0, y: 0, width, height: height / 2 }),
      shape('rect', { class: 'graph-black', x: 0, y: height / 2, width, height: height / 2 })];
    if (known.length) {
      const points = known.map((ply) => `${x(ply)},${y(game.scores[ply])}`);
      parts.push(shape('polyline', { class: 'graph-line', points: points.join(' ') }));
      for (const ply of known) parts.push(shape('circle', { class: 'graph-point', cx: x(ply), cy: y(game.scores[ply]), r: 1.8 }));
    }
    parts.push(shape('line', { class: 'graph-now', x1: x(game.shown), x2: x(game.shown), y1: 0, y2: height }));
    const turn = turningMove(game);
    if (turn) parts.push(shape('circle', { class: 'graph-turn', cx: x(turn.ply), cy: y(game.scores[turn.ply]), r: 5 }));
    this.picture.replaceChildren(...parts);
    const text = turn ? `The game turned with ${turn.text}: from ${scoreText(turn.before)} to ${scoreText(turn.after)}.`
      : known.length > 1 ? 'The game has not turned yet.' : 'Scores come from searches: play, analyse or review.';
    this.describe(game, text);
    const words = [element('p', { className: 'note' }, text)];
    if (turn) {
      const go = element('button', { type: 'button', className: 'small' }, 'Show the position before it');
      go.dataset.key = 'turn';
      go.addEventListener('click', () => this.show(turn.ply - 1));
      words.push(go);
    }
    renew(this.words, ...words);
  }

  describe(game, text) {
    const score = game.scores[game.shown];
    const at = game.shown ? moveText(game, game.shown) : 'the start';
    const values = { 'aria-label': `The score over the game. ${text}`, 'aria-valuemax': this.count, 'aria-valuenow': game.shown,
      'aria-valuetext': `${at}, ${score === undefined ? 'no score yet' : scoreText(score)}` };
    for (const [name, value] of Object.entries(values)) this.picture.setAttribute(name, value);
  }
}

/** The move that cost its side most; nothing if none did much. */
function turningMove(game) {
  let worst = null;
  for (let ply = 1; ply <= game.moves.length; ply += 1) {
    const [before, after] = [game.scores[ply - 1], game.scores[ply]];
    if (before === undefined || after === undefined) continue;
    const mover = (ply - 1 + game.firstPly) % 2 === 0 ? 1 : -1;
    const loss = mover * (expectation(before) - expectation(after));
    if (loss > (worst?.loss ?? leastTurn)) worst = { ply, loss, before, after };
  }
  if (!worst) return null;
  return { ...worst, text: moveText(game, worst.ply) };
}
