// The search as it asks its questions. It finds a score by asking whether a move is worth at least so much: each yes lifts
// the lower bound, each no lowers the upper one. A row is an iteration; its band is what the bounds have left, each mark
// a question that was answered.

import { element, shape } from './elements.js';
import { isMate, numberText, readInfo, scoreText } from './info_line.js';

const width = 300;
const height = 14;
const most = 14;  // rows
const widest = 80;  // centipawns on either side of the middle that are always seen

export class SearchPanel {
  constructor(parent, desk) {
    this.desk = desk;
    this.status = element('p', { className: 'search-status' });
    this.question = element('p', { className: 'search-question' });
    this.rows = element('div', { className: 'search-rows' });
    this.line = element('p', { className: 'search-line' });
    this.legend = element('p', { className: 'search-legend note' });
    parent.replaceChildren(this.status, this.question, this.legend, this.rows, this.line);
    this.reset({ fen: '', moves: [] }, 'white');
  }

  /** A search of a position begins. */
  reset(position, side) {
    this.position = position;
    this.turned = side === 'white' ? 1 : -1;
    this.iterations = new Map();
    this.best = this.exact = this.asked = this.last = null;
    this.isDue = false;
    this.drawn = (this.drawn ?? 0) + 1;  // what is still being drawn comes too late
    this.status.textContent = 'No search has run yet.';
    this.legend.replaceChildren(...legend(this.turned));
    for (const part of [this.question, this.rows, this.line]) part.replaceChildren();
  }

  /** A line of the engine. */
  tell(text) {
    const info = readInfo(text);
    if (info.nodes !== undefined) this.last = { ...this.last, nodes: info.nodes, speed: info.speed, time: info.time };
    if (!info.isStatus) this.note(info);
    if (!this.isDue) {
      this.isDue = true;
      requestAnimationFrame(() => this.draw());
    }
  }

  note(info) {
    const iteration = this.iterations.get(info.depth)
      ?? { depth: info.depth, least: -Infinity, most: Infinity, questions: [], move: null };
    this.iterations.set(info.depth, iteration);
    const move = info.line[0] ?? iteration.move;
    if (move !== iteration.move) Object.assign(iteration, { least: -Infinity, most: Infinity, questions: [], move });
    if (info.bound === 'exact') {
      Object.assign(iteration, { score: info.score, line: info.line, notation: null, nodes: info.nodes, time: info.time });
    } else {
      iteration.questions.push({ bound: info.bound, score: info.score });
      iteration[info.bound] = info.score;
      this.asked = { ...info, move };
    }
    if (info.bound !== 'most' && info.line.length) this.best = info;
    if (info.bound === 'exact') this.exact = info;
    this.last = { ...this.last, depth: info.depth };
  }

  async draw() {
    this.isDue = false;
    const { depth, nodes, speed, time } = this.last ?? {};
    if (!nodes) return;
    this.status.textContent = `Depth ${depth ?? '–'} · ${numberText(nodes)} nodes · ${numberText(speed)} a second · `
      + `${((time ?? 0) / 1000).toFixed(1)} s`;
    const shown = [...this.iterations.values()].slice(-most).reverse();
    const scores = shown.map(({ score, least, most: upper }) => score ?? (Number.isFinite(least) ? least : upper))
      .filter((score) => Number.isFinite(score) && !isMate(score));
    const middle = scores.length ? scores.reduce((sum, score) => sum + score, 0) / scores.length : 0;
    const reach = Math.max(widest, ...scores.map((score) => 1.4 * Math.abs(score - middle)));
    const place = (score) => Math.min(Math.max((this.turned * (score - middle) / reach + 1) / 2, 0), 1) * width;
    this.rows.replaceChildren(...shown.map((iteration) => this.rowOf(iteration, place)));
    await this.drawLines();
  }

  rowOf(iteration, place) {
    const { depth, score, questions } = iteration;
    const picture = shape('svg', { viewBox: `0 0 ${width} ${height}`, preserveAspectRatio: 'none', 'aria-hidden': 'true' });
    let [least, upper] = [-32000, 32000];
    const band = (opacity) => {
      const ends = [place(least), place(upper)].sort((a, b) => a - b);
      picture.append(shape('rect', { class: 'band', x: ends[0], width: Math.max(ends[1] - ends[0], 1.5), y: 2, height: height - 4,
        opacity }));
    };
    band(0.12);
    questions.forEach((question) => {
      if (question.bound === 'least') least = Math.max(least, question.score);
      else upper = Math.min(upper, question.score);
      band(0.16);
    });
    for (const question of questions) {
      const x = place(question.score);
      const step = 4 * this.turned * (question.bound === 'least' ? 1 : -1);
      picture.append(shape('path', { class: question.bound === 'least' ? 'yes' : 'no',
        d: `M ${x} 1 L ${x + step} ${height / 2} L ${x} ${height - 1}` }));
    }
    if (score !== undefined) picture.append(shape('circle', { class: 'found', cx: place(score), cy: height / 2, r: 3.2 }));
    const text = score === undefined ? '…' : scoreText(this.turned * score);
    const row = element('div', { className: 'search-row', role: 'img' }, element('span', { className: 'search-depth' }, String(depth)),
      picture, element('span', { className: 'search-score' }, text));
    row.iteration = iteration;
    this.describe(row);
    return row;
  }

  /** In words: questions, score, nodes, time and line of an iteration. */
  describe(row) {
    const { depth, score, questions, nodes, time, line, notation } = row.iteration;
    const told = line ? `, score ${scoreText(this.turned * score)}, ${numberText(nodes)} nodes, ${(time / 1000).toFixed(1)} s: `
      + (notation ?? line).join(' ') : '';
    row.title = `Depth ${depth}: ${questions.length} questions${told}`;
    row.setAttribute('aria-label', row.title);
  }

  async drawLines() {
    const number = this.drawn = (this.drawn ?? 0) + 1;
    const before = this.position.moves;
    const notationOf = async (line) => {
      const { notation } = await this.desk.ask('game', this.position.fen, [...before, ...line].join(' '));
      return notation?.slice(before.length) ?? line;
    };
    const best = this.best && await notationOf(this.best.line);
    const asked = this.asked?.move && (await notationOf([this.asked.move]))[0];
    // Each iteration has told its line once; the next drawing shows how a player writes it.
    const untold = [...this.iterations.values()].filter(({ line, notation }) => line && !notation);
    await Promise.all(untold.map(async (iteration) => {
      const { line } = iteration;
      const notation = await notationOf(line);
      if (iteration.line === line) iteration.notation = notation;
    }));
    if (number !== this.drawn) return;
    for (const row of this.rows.children) this.describe(row);
    this.line.replaceChildren(...(best ? [element('strong', {}, best[0]), ` ${best.slice(1).join(' ')}`] : []));
    if (asked && this.iterations.has(this.asked.depth)) {
      const value = scoreText(this.asked.score);
      this.question.textContent = this.asked.bound === 'least'
        ? `Depth ${this.asked.depth}: is ${asked} worth at least ${value} to the mover? Yes.`
        : `Depth ${this.asked.depth}: is ${asked} worth more than ${value} to the mover? No.`;
    }
  }

  /** The score of the search, as White sees it; undefined if it has found none. A move that is worth at least so much is
   *  told before what it is worth: that changes the score only if it is more. */
  get score() {
    const { best, exact } = this;
    return best ? this.turned * Math.max(best.score, exact?.score ?? -Infinity) : undefined;
  }
}

/** What the marks mean, each beside its word, turned as they are. */
function legend(turned) {
  const mark = (className, tag, attributes, text) => element('span', {},
    shape('svg', { viewBox: `0 0 12 ${height}`, width: 12, height, 'aria-hidden': 'true' },
      shape(tag, { class: className, ...attributes })), text);
  const hook = (step) => ({ d: `M 6 1 L ${6 + turned * step} ${height / 2} L 6 ${height - 1}` });
  return [
    mark('yes', 'path', hook(4), 'yes, at least so much'), mark('no', 'path', hook(-4), 'no, not so much'),
    mark('found', 'circle', { cx: 6, cy: height / 2, r: 3.2 }, 'the score'),
    mark('band', 'rect', { x: 0, y: 2, width: 12, height: height - 4, opacity: 0.4 },
      'what the bounds have left; right is good for White')];
}
