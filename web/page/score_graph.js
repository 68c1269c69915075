// The score over the game: a line from move to move, and a mark where the game turned. What stands up is good for White.

import { element, shape } from './elements.js';
import { expectation, scoreText } from './info_line.js';

const width = 320;
const height = 96;
const leastTurn = 0.2;  // of the way from a draw to a win; what is less turns nothing

export class ScoreGraph {
  /** `show` is called with a number of moves when somebody points at it. */
  constructor(parent, show) {
    this.parent = parent;
    this.show = show;
  }

  draw(game) {
    const count = game.moves.length;
    const x = (ply) => (count ? (ply / count) * (width - 8) + 4 : 4);
    const y = (score) => (1 - expectation(score)) * (height / 2 - 4) + 4;
    const known = [...Array(count + 1).keys()].filter((ply) => game.scores[ply] !== undefined);
    const picture = shape('svg', { viewBox: `0 0 ${width} ${height}`, role: 'img' });
    picture.append(shape('rect', { class: 'graph-white', x: 0, y: 0, width, height: height / 2 }),
      shape('rect', { class: 'graph-black', x: 0, y: height / 2, width, height: height / 2 }));
    if (known.length) {
      const points = known.map((ply) => `${x(ply)},${y(game.scores[ply])}`);
      picture.append(shape('polyline', { class: 'graph-line', points: points.join(' ') }));
      for (const ply of known) picture.append(shape('circle', { class: 'graph-point', cx: x(ply), cy: y(game.scores[ply]), r: 1.8 }));
    }
    picture.append(shape('line', { class: 'graph-now', x1: x(game.shown), x2: x(game.shown), y1: 0, y2: height }));
    const turn = turningMove(game);
    if (turn) picture.append(shape('circle', { class: 'graph-turn', cx: x(turn.ply), cy: y(game.scores[turn.ply]), r: 5 }));
    picture.addEventListener('click', (event) => {
      const box = picture.getBoundingClientRect();
      this.show(Math.round(((event.clientX - box.left) / box.width * width - 4) / (width - 8) * count));
    });
    const text = turn ? `The game turned with ${turn.text}: from ${scoreText(turn.before)} to ${scoreText(turn.after)}.`
      : known.length > 1 ? 'The game has not turned yet.' : 'Scores come from searches: play, analyse or review.';
    picture.setAttribute('aria-label', text);
    const words = [element('p', { className: 'note' }, text)];
    if (turn) {
      const go = element('button', { type: 'button', className: 'small' }, 'Show the position before it');
      go.addEventListener('click', () => this.show(turn.ply - 1));
      words.push(go);
    }
    this.parent.replaceChildren(picture, ...words);
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

/** "12. Nf3", "12… Nc6". */
export function moveText(game, ply) {
  const played = ply - 1 + game.firstPly;
  return `${Math.floor(played / 2) + 1}${played % 2 ? '…' : '.'} ${game.notation[ply - 1]}`;
}
