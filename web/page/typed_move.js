// The field in which a move is typed, and the word about one that can't be played: it stays until the next try.

import { byId } from './elements.js';

export class TypedMove {
  /** `refusal` is asked why nobody may move now, if so; `play` plays a move, as UCI writes it. */
  constructor(game, refusal, play) {
    this.game = game;
    this.refusal = refusal;
    this.play = play;
    this.input = byId('move-text');
    byId('typed-move').addEventListener('submit', (event) => {
      event.preventDefault();
      this.take();
    });
    this.input.addEventListener('input', () => this.say(''));
  }

  async take() {
    const text = this.input.value.trim();
    const found = this.game.findMoves(text);
    const error = this.refusal() ?? (found.length === 1 ? '' : text === '' ? 'Type a move first.'
      : found.length ? `“${text}” can be ${found.map(({ uci }) => uci).join(' or ')}.` : `There is no move “${text}” here.`);
    this.say(error);
    if (error) return;
    this.input.value = '';
    await this.play(found[0].uci);
  }

  say(error) {
    byId('move-error').textContent = error;
    this.input.setAttribute('aria-invalid', String(error !== ''));
  }
}
