// Positions and games as text.

import { byId } from './elements.js';

const reasons = {
  unreadable_game: 'This is no game that can be read.',
  no_such_position: 'The game begins from no position.',
  illegal_move_in_game: 'The game has a move that can\'t be played.',
};

export class TextDialog {
  /** `names` gives who plays a game from a position; `loaded` is called when another position or game stands on the
   *  board. */
  constructor(game, names, loaded) {
    this.game = game;
    this.names = names;
    this.loaded = loaded;
    this.dialog = byId('text-dialog');
    // Enter in the field of the position presses the first button that submits.
    byId('load-fen').addEventListener('click', (event) => {
      event.preventDefault();
      this.loadFen();
    });
    byId('close-text').addEventListener('click', () => this.dialog.close());
    byId('load-pgn').addEventListener('click', () => this.loadPgn());
    byId('save-pgn').addEventListener('click', () => this.save());
  }

  /** With the position and the game of this moment; what is typed then stays, whatever the engine plays. */
  async open() {
    byId('text-error').textContent = '';
    byId('fen').value = this.game.state.fen;
    byId('pgn').value = await this.game.pgn();
    this.dialog.showModal();
  }

  async loadFen() { await this.finish(await this.game.loadFen(byId('fen').value, this.names()) ? null : 'There is no such position.'); }

  async loadPgn() {
    const error = await this.game.loadPgn(byId('pgn').value);
    await this.finish(error && (reasons[error] ?? 'The game could not be loaded.'));
  }

  async finish(error) {
    byId('text-error').textContent = error ?? '';
    if (error) return;
    this.dialog.close();
    await this.loaded();
  }

  save() {
    const link = document.createElement('a');
    link.href = URL.createObjectURL(new Blob([byId('pgn').value], { type: 'application/x-chess-pgn' }));
    link.download = 'vorka.pgn';
    link.click();
    URL.revokeObjectURL(link.href);
  }
}
