// Why the score of the position is what it is: every term of the evaluation as a row with two bars, the positional value
// and the reckless one, to the right what is good for White. A row opens into the rules that the term is made of.
// Pointing at a row, or reaching it with the keyboard, lights its squares on the board.

import { element, renew } from './elements.js';
import { plainName, scoreText, signed } from './info_line.js';

const sixteenths = 16;
const sideNames = { white: 'White', black: 'Black' };
// By the number of their class.
const types = ['opening', 'middle game', 'balanced ending', 'rook ending', 'queen ending', 'knight ending',
  'ending of knight against bishop', 'ending with bishops of one colour', 'ending with bishops of opposite colours',
  'ending of rook against minor piece', 'ending of queen against rook', 'ending with a lone knight', 'ending with a lone bishop',
  'ending with a lone rook', 'ending with a lone queen', 'pawn ending', 'position without pawns', 'unbalanced ending'];

export class WhyPanel {
  constructor(parent, desk, light) {
    this.parent = parent;
    this.desk = desk;
    this.light = light;
    this.open = new Set();
    this.held = [];  // the squares of the row that has the keyboard
  }

  /** Explains the game's position with the eyes of a personality. */
  async show(game, personality) {
    const number = this.asked = (this.asked ?? 0) + 1;
    const trace = await this.desk.ask('evaluation', personality, ...game.lines);
    if (number === this.asked) this.draw(trace, game.isOver ? `${game.result}: ${game.reason}.` : null);
  }

  /** `end` says how the game has ended, if it has. */
  draw(trace, end) {
    this.held = [];
    this.light([]);
    const turned = trace.mover === 'white' ? 1 : -1;
    this.weight = trace.isBlended ? Math.min(Math.max(trace.blendWeight, 0), sixteenths) : 0;
    const rows = this.rowsOf(trace, turned);
    this.scale = scaleOf(rows.map(({ values }) => values), 30);
    const isTelling = ({ values, rules }) => rules.length > 0 || values.some((value) => value !== 0);
    const [telling, silent] = [rows.filter(isTelling), rows.filter((row) => !isTelling(row))];
    telling.sort((a, b) => Math.abs(this.blend(b.values)) - Math.abs(this.blend(a.values)));

    const score = turned * trace.score;
    const type = types[trace.type];
    const kind = `${/^[aeiou]/.test(type) ? 'an' : 'a'} ${type}`;
    const parts = [end
      ? element('p', { className: 'why-summary' }, element('strong', { className: 'why-score' }, end),
        ` The game is over. The terms below judge the men on the board, as ${kind}, and know nothing of that: ${scoreText(score)}.`)
      : element('p', { className: 'why-summary' }, element('strong', { className: 'why-score' }, scoreText(score)),
        ` ${verdict(score)} This is ${kind}, judged before any move is tried.`)];
    if (trace.isBlended) parts.push(this.blendOf(trace));
    parts.push(element('div', { className: 'why-head', ariaHidden: 'true' }, element('span', { className: 'why-sides' },
      element('span', {}, '◂ Black'), element('span', {}, 'White ▸'))));
    parts.push(element('div', { className: 'why-rows' }, ...telling.map((row) => this.rowElement(row))));
    if (trace.steps.length) parts.push(this.stepsOf(trace, turned));
    if (silent.length) {
      parts.push(element('p', { className: 'note' },
        `${silent.length} terms say nothing here: ${silent.map(({ name }) => plainName(name)).join(', ')}.`));
    }
    renew(this.parent, ...parts);
  }

  blend([positional, reckless]) {
    return Math.trunc(((sixteenths - this.weight) * positional + this.weight * reckless) / sixteenths);
  }

  /** Parts stand with their rules in place of `pawns_alone`, which is their sum. Values are as White sees them. */
  rowsOf(trace, turned) {
    const rows = trace.terms.filter(({ name }) => name !== 'pawns_alone').map((term) => ({
      name: term.name,
      values: term.sum,
      sides: term.hasSides ? term : null,
      times: term.times,
      rules: trace.rules.filter(({ term: name }) => name === term.name),
    }));
    if (trace.isBlended) {
      const material = turned * trace.material;
      rows.unshift({ name: 'material', values: [material, material], rules: [], sides: null, times: 1 });
    }
    return rows;
  }

  rowElement(row) {
    const value = this.blend(row.values);
    const squares = row.rules.flatMap((rule) => rule.squares.map((square) => [square, rule.side]));
    const head = element('summary', { className: 'why-row' }, element('span', { className: 'why-name' },
      plainName(row.name) + (row.times > 1 ? ` ×${row.times}` : '')), this.bars(row.values),
    element('span', { className: 'why-value' }, scoreText(value)));
    head.setAttribute('aria-label', `${plainName(row.name)}: ${scoreText(value)}; positional ${scoreText(row.values[0])}, `
      + `reckless ${scoreText(row.values[1])}, ${row.rules.length} rules`);
    const sides = sidesOf(row);
    const scale = scaleOf([...sides.map(([, values]) => values), ...row.rules.map(valuesOf)], 4);
    const details = element('details', { open: this.open.has(row.name) }, head, this.sidesNote(row, sides),
      ...sides.map(([side, values]) => this.sideElement(row, side, values, scale)),
      ...row.rules.map((rule, i) => this.ruleElement(rule, `${row.name} ${i}`, scale)));
    details.dataset.term = head.dataset.key = row.name;
    details.addEventListener('toggle', () => (details.open ? this.open.add(row.name) : this.open.delete(row.name)));
    this.lights(head, squares);
    return details;
  }

  sidesNote(row, sides) {
    const text = (pair) => `${scoreText(pair[0])} / ${scoreText(pair[1])}`;
    const parts = sides.map(([side, values]) => `${sideNames[side]} ${text(values)}, `).join('');
    const all = `${parts}${parts ? 'together' : 'Together'} ${text(row.values)} (positional / reckless).`;
    return element('p', { className: 'note' }, row.rules.length || parts ? `${all} The bars below have a scale of their own.` : all);
  }

  /** What the term says of one side, as White sees it. */
  sideElement(row, side, values, scale) {
    const name = sideNames[side];
    const made = element('div', { className: `why-row why-side of-${side}`, tabIndex: 0, role: 'note' },
      element('span', { className: 'why-name' }, `all of ${name}`), this.bars(values, scale),
      element('span', { className: 'why-value' }, scoreText(this.blend(values))));
    made.dataset.key = `${row.name} ${side}`;
    made.setAttribute('aria-label', `${plainName(row.name)}, all of ${name}: ${scoreText(this.blend(values))}`);
    this.lights(made, row.rules.filter((rule) => rule.side === side).flatMap(({ squares }) => squares.map((square) => [square, side])));
    return made;
  }

  ruleElement(rule, key, scale) {
    const values = valuesOf(rule);
    const points = pointsText(rule.points);
    const made = element('div', { className: `why-row why-rule of-${rule.side}`, tabIndex: 0, role: 'note' },
      element('span', { className: 'why-name' }, plainName(rule.name),
        element('small', {}, ` ${rule.squares.length > 16 ? `${rule.squares.length} squares` : rule.squares.join(' ')}`)),
      this.bars(values, scale), element('span', { className: 'why-value' }, scoreText(this.blend(values))));
    made.dataset.key = key;
    if (points) made.title = points;
    made.setAttribute('aria-label', `${rule.side}: ${plainName(rule.name)}, ${rule.squares.join(' ')}, `
      + `${scoreText(this.blend(values))}${points ? `; ${points}` : ''}`);
    this.lights(made, rule.squares.map((square) => [square, rule.side]));
    return made;
  }

  /** A row that is pointed at lights its squares, or else the one that has the keyboard. A finger that is lifted leaves
   *  them lit. */
  lights(row, squares) {
    row.addEventListener('pointerenter', () => this.light(squares));
    row.addEventListener('pointerleave', (event) => event.pointerType === 'touch' || this.light(this.held));
    row.addEventListener('focus', () => row.matches(':focus-visible') && this.hold(squares));
    row.addEventListener('keydown', () => this.hold(squares));  // it had been clicked, and the keyboard goes on
    row.addEventListener('blur', () => this.held.length && this.hold([]));
  }

  hold(squares) {
    this.held = squares;
    this.light(squares);
  }

  bars(values, scale = this.scale) {
    const bar = (value, kind) => element('span', { className: `bar ${kind} ${value < 0 ? 'minus' : 'plus'}`,
      style: `--length: ${scale(value)}%` });
    return element('span', { className: 'why-bars', ariaHidden: 'true' }, bar(values[0], 'positional'), bar(values[1], 'reckless'));
  }

  blendOf(trace) {
    const share = Math.round((100 * this.weight) / sixteenths);
    const [positional, reckless] = trace.sum;
    const danger = (king) => `attack ${signed(king.attack)}, cover ${signed(king.cover)}`;
    const text = element('p', {}, `The terms come to ${scoreText(positional)} if one plays for position and `
      + `${scoreText(reckless)} if one plays for attack. Blend: ${this.weight} of 16 parts reckless `
      + `(openness ${signed(trace.openness)}; the white king's danger: ${danger(trace.whiteKing)}; the black king's: `
      + `${danger(trace.blackKing)}). With the material: ${scoreText((trace.mover === 'white' ? 1 : -1) * trace.fullScore)}.`);
    const meter = element('div', { className: 'blend', role: 'img' }, element('span', {}, 'positional'),
      element('span', { className: 'blend-line' }, element('span', { className: 'blend-mark', style: `--share: ${share}%` })),
      element('span', {}, 'reckless'));
    meter.setAttribute('aria-label', `Blend: ${this.weight} of 16 parts reckless`);
    return element('div', { className: 'why-blend' }, meter, text);
  }

  /** An ending goes from the sum of its terms to its score by steps. */
  stepsOf(trace, turned) {
    const words = { adds: 'adds', scales: 'scales to', limits: 'limits to', sets: 'sets to' };
    return element('ol', { className: 'why-steps' }, ...trace.steps.map((step) => {
      const amount = step.effect === 'scales' ? `${step.share[0]}/${step.share[1]}`
        : scoreText(turned * (step.effect === 'adds' ? step.change : step.score));
      const made = element('li', { tabIndex: 0 }, `${plainName(step.name)} (${step.side === 'white' ? 'White' : 'Black'}) `
        + `${words[step.effect]} ${amount}: ${scoreText(turned * step.score)}`);
      this.lights(made, step.squares.map((square) => [square, step.side]));
      return made;
    }));
  }
}

/** How long a bar is, in parts of a hundred: half of its place for the largest value. No bar of less than `least` fills
 *  that. */
function scaleOf(pairs, least) {
  const largest = Math.max(least, ...pairs.flat().map(Math.abs));
  return (value) => Math.min(Math.abs(value) / largest, 1) * 50;
}

/** The values of a rule as White sees them. */
const valuesOf = ({ side, value }) => value.map((part) => (side === 'white' ? part : -part));

/** What a term says of each side, as White sees it: [['white', values], ['black', values]]. A term that looks at both at
 *  once is parted by its rules, where they are all of it. */
function sidesOf(row) {
  const both = ['white', 'black'];
  if (row.sides) return both.map((side) => [side, row.sides[side].map((part) => (side === 'white' ? part : -part))]);
  const sumOf = (rules) => rules.map(valuesOf).reduce((sum, values) => sum.map((part, i) => part + values[i]), [0, 0]);
  if (!row.rules.length || sumOf(row.rules).some((part, i) => part !== row.values[i])) return [];
  return both.map((side) => [side, sumOf(row.rules.filter((rule) => rule.side === side))]);
}

function verdict(score) {
  if (Math.abs(score) < 25) return 'The sides stand about even.';
  const side = score > 0 ? 'White' : 'Black';
  if (Math.abs(score) < 75) return `${side} stands a little better.`;
  return Math.abs(score) < 200 ? `${side} stands better.` : `${side} is winning.`;
}

/** What a rule added to the counters that later terms read: "pressure of White, king side +6". */
function pointsText({ pressure, cover, activity }) {
  const wings = ['queen side', 'centre', 'king side'];
  const parts = [];
  for (const [name, counters] of Object.entries({ pressure, cover })) {
    for (const [side, points] of Object.entries(counters)) {
      points.forEach((count, wing) => {
        if (count) parts.push(`${name} of ${side}, ${wings[wing]} ${count > 0 ? '+' : ''}${signed(count)}`);
      });
    }
  }
  if (activity) parts.push(`activity ${signed(activity)}`);
  return parts.join('; ');
}
