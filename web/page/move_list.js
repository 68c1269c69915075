// The moves of the game, each a button that shows the position after it.

import { byId, element, renew } from './elements.js';
import { scoreText } from './info_line.js';

/** `look` is called with a number of moves. */
export function showMoves(game, look) {
  const list = byId('moves');
  renew(list, ...game.notation.map((san, i) => {
    const played = i + game.firstPly;
    const number = played % 2 === 0 || i === 0 ? element('span', { className: 'number' },
      `${Math.floor(played / 2) + 1}${played % 2 ? '…' : '.'}`) : '';
    const score = game.scores[i + 1];
    const button = element('button', { type: 'button', title: score === undefined ? '' : scoreText(score) }, san);
    button.dataset.key = String(i + 1);
    if (i + 1 === game.shown) button.setAttribute('aria-current', 'true');
    button.addEventListener('click', () => look(i + 1));
    return element('li', {}, number, button);
  }));
  const current = list.querySelector('[aria-current]');
  if (current) list.scrollTop = current.offsetTop - list.offsetTop - list.clientHeight / 2;
}

/** "12. Nf3", "12… Nc6". */
export function moveText(game, ply) {
  const played = ply - 1 + game.firstPly;
  return `${Math.floor(played / 2) + 1}${played % 2 ? '…' : '.'} ${game.notation[ply - 1]}`;
}
