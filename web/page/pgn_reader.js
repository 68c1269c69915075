// Reads a game as text in Portable Game Notation, as leniently as programs and people write it: with comments, variations
// and glyphs, with or without numbers and a result, with "e.p." and zeros for castling. Of several games the first one
// counts. What the moves mean is the desk's business.

const results = { '1-0': '1-0', '0-1': '0-1', '1/2-1/2': '1/2-1/2', '1/2': '1/2-1/2', '½-½': '1/2-1/2', '*': '*' };
// A tag, something in brackets that is none, a comment, a variation's ends, a glyph such as $2, a word.
const parts = /\[\s*(\w+)\s*"((?:\\.|[^"\\])*)"\s*\]|\[[^\]\n]*\]|\{[^}]*\}?|;[^\n]*|[()]|\$\d*|[^\s{};()$[\]]+/g;

/** { tags, moves, result }: the tags as pairs of name and value, the moves as words. */
export function readPgn(text) {
  const game = { tags: [], moves: [], result: null };
  let depth = 0;
  for (const [part, name, value] of text.replace(/^\ufeff/, '').replace(/\r/g, '').replace(/^%.*$/gm, '').matchAll(parts)) {
    if (name) {
      if (game.moves.length) break;  // the next game
      game.tags.push([name, value.replace(/\\(.)/g, '$1').replace(/\s+/g, ' ').trim()]);
    } else if (part === '(') {
      depth += 1;
    } else if (part === ')') {
      depth = Math.max(depth - 1, 0);
    } else if (depth === 0 && !/^[{;$[]/.test(part)) {
      game.result = results[part] ?? null;
      if (game.result) break;
      const move = plainMove(part);
      if (move) game.moves.push(move);
    }
  }
  game.result ??= results[game.tags.find(([name]) => name === 'Result')?.[1]] ?? '*';
  return game;
}

/** The text that the desk reads. */
export function plainText({ tags, moves, result }) {
  const fen = tags.find(([name]) => name === 'FEN')?.[1];
  return `${fen ? `[FEN "${fen.replace(/["\\]/g, '')}"]\n\n` : ''}${moves.join(' ')} ${result}\n`;
}

/** Without its number and marks, and as the desk writes castling and promotion; empty for what is no move. */
function plainMove(word) {
  const move = word.replace(/^\d+(?=[.…]|$)/, '').replace(/^[.…]+/, '').replace(/[!?+#=]+$/, '');
  if (/^(e\.?p\.?)?$/i.test(move) || (/^[^\p{L}\p{N}]+$/u.test(move) && move !== '--')) return '';
  if (/^[0Oo]-?[0Oo](-?[0Oo])?$/.test(move)) return move.replace(/-/g, '').length === 3 ? 'O-O-O' : 'O-O';
  return move.replace(/e\.?p\.?$/i, '').replace(/(\w)-(?=\w)/, '$1')
    .replace(/([18])=?\/?([QRBN])$/i, (_, rank, piece) => `${rank}=${piece.toUpperCase()}`);
}
