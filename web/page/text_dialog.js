// Positions and games as text.

import { byId } from './elements.js';

const reasons = {
  no_position: 'There is no such position.',
  unreadable_game: 'This is no game that can be read.',
  no_such_position: 'The game begins from no position.',
  illegal_move_in_game: 'The game has a move that can\'t be played.',
};

export class TextDialog {
  /** `names` gives who plays a game from a position. `load` runs what puts another position or game on the board, or gives
   *  a word about why it can't, and hands that word on. */
  constructor(game, names, load) {
    this.game = game;
    this.names = names;
    this.load = load;
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

  loadFen() { return this.take(async () => (await this.game.loadFen(byId('fen').value, this.names()) ? null : 'no_position')); }
  loadPgn() { return this.take(() => this.game.loadPgn(byId('pgn').value)); }

  async take(read) {
    const error = await this.load(read);
    byId('text-error').textContent = error ? reasons[error] ?? 'The game could not be loaded.' : '';
    if (!error) this.dialog.close();
  }

  save() {
    const link = document.createElement('a');
    link.href = URL.createObjectURL(new Blob([byId('pgn').value], { type: 'application/x-chess-pgn' }));
    link.download = 'vorka.pgn';
    link.click();
    URL.revokeObjectURL(link.href);
  }
}
