// What the engine says while it searches, read word by word, and scores as a reader sees them.

/** { depth, score, bound, nodes, speed, time, line } of an `info` line; null if it tells no score. Centipawns, for the
 *  side to move. */
export function readInfo(line) {
  const words = line.split(' ');
  const number = (name) => (words.includes(name) ? Number(words[words.indexOf(name) + 1]) : undefined);
  const kind = words[words.indexOf('score') + 1];
  const common = { nodes: number('nodes'), speed: number('nps'), time: number('time') };
  if (!words.includes('score') || number('multipv') > 1) return { ...common, isStatus: true };
  const value = Number(words[words.indexOf('score') + 2]);
  return {
    ...common,
    depth: number('depth'),
    score: kind === 'mate' ? mateScore(value) : value,
    bound: words.includes('lowerbound') ? 'least' : words.includes('upperbound') ? 'most' : 'exact',
    line: words.includes('pv') ? words.slice(words.indexOf('pv') + 1) : [],
  };
}

const farthestMate = 30000;
const mateScore = (moves) => (moves > 0 ? farthestMate - moves : -farthestMate - moves);
export const isMate = (score) => Math.abs(score) > farthestMate - 1000;

/** "5", "−5": with the minus sign that is as wide as a plus. */
export const signed = (number) => `${number < 0 ? '−' : ''}${Math.abs(number)}`;

/** "+0.34", "#5", "−#5". */
export function scoreText(score) {
  if (isMate(score)) return `${score < 0 ? '−' : ''}#${farthestMate - Math.abs(score)}`;
  return (score > 0 ? '+' : score < 0 ? '−' : '') + (Math.abs(score) / 100).toFixed(2);
}

/** From -1 to 1: what a score says of the result. */
export const expectation = (score) => 2 / (1 + Math.exp(-score / 250)) - 1;

export const numberText = (number) => Math.round(number).toString().replace(/\B(?=(\d{3})+$)/g, '\u202f');

/** "knight_outpost_defended" as "knight outpost defended". */
export const plainName = (name) => name.replaceAll('_', ' ');
