// The page: puts the parts together, and decides who moves when.

import { BoardView } from './board_view.js';
import { Clocks } from './clocks.js';
import { byId, element, memory } from './elements.js';
import { Desk, Searcher } from './engine.js';
import { Game } from './game.js';
import { scoreText } from './info_line.js';
import { OpponentPanel } from './opponent_panel.js';
import { moveText, ScoreGraph } from './score_graph.js';
import { SearchPanel } from './search_panel.js';
import { SettingsPanel } from './settings_panel.js';
import { TextDialog } from './text_dialog.js';
import { useTheme } from './theme.js';
import { WhyPanel } from './why_panel.js';

const other = { white: 'black', black: 'white' };
const sideNames = { white: 'White', black: 'Black' };
const reviewLimits = 'nodes 60000';

class Page {
  async start() {
    useTheme(byId('theme'));
    [this.desk, this.searcher] = await Promise.all([Desk.start(), new Searcher().start()]);
    this.game = new Game(this.desk);
    this.search = new SearchPanel(byId('search'), this.desk);
    this.opponent = new OpponentPanel(this.searcher, (what) => { this.changing = this.opponentChanged(what); });
    const { settings } = await this.desk.ask('settings');
    this.settings = new SettingsPanel(byId('settings'), this.searcher, settings);
    this.board = new BoardView(byId('board'), this.game,
      { onMove: (uci) => this.playerMoves(uci), say: (text) => { byId('speech').textContent = text; } });
    this.why = new WhyPanel(byId('why'), this.desk, (squares) => this.board.light(squares));
    this.graph = new ScoreGraph(byId('graph'), (count) => this.look(count));
    this.clocks = new Clocks({ white: byId('clock-bottom'), black: byId('clock-top') }, (side) => this.flagFell(side));
    this.text = new TextDialog(this.game, () => this.loaded());
    this.isAnalysing = false;
    this.game.addEventListener('change', () => this.show());
    this.listen();
    await this.newGame();
    document.documentElement.dataset.ready = String(Math.round(performance.now()));
  }

  listen() {
    const on = (id, act) => byId(id).addEventListener('click', act);
    on('new-game', () => this.newGame());
    on('take-back', () => this.takeBack());
    on('flip', () => this.flip());
    on('analyse', () => this.toggleAnalysis());
    on('move-now', () => this.moveNow());
    on('resign', () => this.resign());
    on('review', () => this.review());
    on('to-start', () => this.look(0));
    on('back', () => this.look(this.game.shown - 1));
    on('forward', () => this.look(this.game.shown + 1));
    on('to-end', () => this.look(this.game.moves.length));
    on('open-text', () => this.text.open());
    byId('typed-move').addEventListener('submit', (event) => {
      event.preventDefault();
      this.playTyped(byId('move-text'));
    });
  }

  get isPlayersTurn() {
    return this.opponent.playAs === 'both' || this.opponent.playAs === this.game.state.side;
  }

  // --- Showing ---

  show() {
    const { game } = this;
    const mayMove = !game.isOver && !this.isThinking && (this.isPlayersTurn || !game.atEnd);
    this.shown = this.board.show(mayMove ? game.state.side : null);
    this.why.show(game, this.opponent.eyes);
    this.graph.draw(game);
    this.showMoves();
    this.showNames();
    byId('status').textContent = this.statusText();
    byId('take-back').disabled = !game.moves.length;
    byId('move-now').disabled = !this.isThinking;
    byId('resign').disabled = game.isOver || !game.moves.length || !(this.opponent.playAs in other);
  }

  statusText() {
    const { game } = this;
    const last = game.shown ? `${moveText(game, game.shown)}. ` : '';
    if (game.isOver && game.atEnd) return `${last}${game.result}: ${game.reason}.`;
    const check = game.state.isCheck ? 'Check. ' : '';
    if (this.isThinking) return `${last}${check}Vorka is thinking …`;
    return `${last}${check}${sideNames[game.state.side]} to move.`;
  }

  showMoves() {
    const { game } = this;
    const list = byId('moves');
    list.replaceChildren(...game.notation.map((san, i) => {
      const played = i + game.firstPly;
      const number = played % 2 === 0 || i === 0 ? element('span', { className: 'number' },
        `${Math.floor(played / 2) + 1}${played % 2 ? '…' : '.'}`) : '';
      const score = game.scores[i + 1];
      const button = element('button', { type: 'button', title: score === undefined ? '' : scoreText(score) }, san);
      if (i + 1 === game.shown) button.setAttribute('aria-current', 'true');
      button.addEventListener('click', () => this.look(i + 1));
      return element('li', {}, number, button);
    }));
    const current = list.querySelector('[aria-current]');
    if (current) list.scrollTop = current.offsetTop - list.offsetTop - list.clientHeight / 2;
  }

  showNames() {
    const bottom = this.board.orientation === 'w' ? 'white' : 'black';
    const vorka = `Vorka (${this.opponent.description})`;
    const nameOf = (side) => (this.opponent.playAs === 'both' || this.opponent.playAs === side ? 'You' : vorka);
    byId('name-bottom').textContent = `${sideNames[bottom]}: ${nameOf(bottom)}`;
    byId('name-top').textContent = `${sideNames[other[bottom]]}: ${nameOf(other[bottom])}`;
    this.clocks.elements = { [bottom]: byId('clock-bottom'), [other[bottom]]: byId('clock-top') };
    this.clocks.draw();
  }

  async flip() {
    await this.board.flip();
    this.showNames();
  }

  // --- Playing ---

  async newGame() {
    this.board.lock();
    await this.stopThinking();
    this.searcher.newGame();
    this.game.reset();
    const { playAs } = this.opponent;
    this.game.names = { white: playAs === 'white' || playAs === 'both' ? 'You' : 'Vorka',
      black: playAs === 'black' || playAs === 'both' ? 'You' : 'Vorka' };
    this.clocks.set(this.opponent.control);
    await this.board.turnTo(playAs === 'black' ? 'black' : 'white');
    await this.game.refresh();
    await this.goOn();
  }

  async loaded() {
    await this.stopThinking();
    this.searcher.newGame();
    this.clocks.set(null);
    this.search.reset(this.game.position, this.game.state.side);
    this.show();
    await this.shown;
    if (!this.game.moves.length) await this.goOn();
    else if (this.isAnalysing) this.analyse();
  }

  async playerMoves(uci) {
    if (this.isMoving) return;
    this.isMoving = true;  // the position that is known is not yet the one after the move
    await this.stopThinking();
    await this.game.play(uci);
    this.isMoving = false;
    await this.goOn();
  }

  async playTyped(input) {
    const move = this.game.isOver || this.isThinking ? undefined : this.game.findMove(input.value.trim());
    input.setCustomValidity(move ? '' : 'There is no such move here.');
    input.reportValidity();
    input.setCustomValidity('');
    if (!move) return;
    input.value = '';
    await this.playerMoves(move.uci);
  }

  /** After a move, or before the first one: the engine moves if it is its turn. */
  async goOn() {
    const { game } = this;
    if (game.isOver) {
      this.clocks.pause();
      return;
    }
    this.clocks.run(game.moves.length || !this.isPlayersTurn ? game.state.side : null);
    if (!this.isPlayersTurn) await this.engineMoves();
    else if (this.isAnalysing) this.analyse();
  }

  async engineMoves() {
    const number = this.turn = (this.turn ?? 0) + 1;
    this.isThinking = true;
    this.show();
    await this.shown;
    this.search.reset(this.game.position, this.game.state.side);
    const limits = this.clocks.isOn ? this.clocks.limits : `movetime ${this.opponent.thinkTime}`;
    this.opponent.weaken(true);
    const move = await this.searcher.think(this.game.position, limits, (line) => this.search.tell(line));
    if (number !== this.turn) return;  // somebody has taken back, or begun another game
    this.isThinking = false;
    if (!move || this.game.isOver) {
      this.show();
      return;
    }
    const { score } = this.search;
    const ply = this.game.moves.length;
    await this.game.play(move);
    if (score !== undefined) this.game.scores[ply] = this.game.scores[ply + 1] = score;
    this.graph.draw(this.game);
    await this.goOn();
  }

  /** Ends the search, whose move counts no more. */
  async stopThinking() {
    this.turn = (this.turn ?? 0) + 1;
    this.isThinking = false;
    await this.searcher.stop();
  }

  moveNow() { if (this.isThinking) this.searcher.stop(); }

  /** One's own move and the answer to it, or one move where there is no opponent. */
  async takeBack() {
    this.board.lock();
    await this.stopThinking();
    this.clocks.pause();
    const { game } = this;
    const isAlone = !(this.opponent.playAs in other);
    const count = isAlone || this.isPlayersTurn === false || game.moves.length < 2 ? 1 : 2;
    await game.takeBack(count);
    if (this.isAnalysing) this.analyse();
    else if (!isAlone && !this.isPlayersTurn) await this.goOn();
    else if (this.isPlayersTurn) this.clocks.run(game.state.side);
  }

  async look(count) {
    if (this.isThinking) return;
    await this.game.show(count);
    if (this.isAnalysing) this.analyse();
  }

  resign() {
    const side = this.opponent.playAs;
    this.finish(side === 'white' ? '0-1' : '1-0', `${sideNames[side]} resigns`);
  }

  flagFell(side) { this.finish(side === 'white' ? '0-1' : '1-0', `${sideNames[side]} has no time left`); }

  async finish(result, reason) {
    await this.stopThinking();
    this.clocks.pause();
    this.game.end(result, reason);
    this.show();
  }

  async opponentChanged(what) {
    if (what === 'playAs') {
      await this.stopThinking();
      await this.board.turnTo(this.opponent.playAs === 'black' ? 'black' : 'white');
      this.show();
      await this.goOn();
    } else if (what === 'control') {
      this.clocks.set(this.opponent.control);
    } else {
      this.show();
    }
  }

  // --- Analysing ---

  async toggleAnalysis() {
    this.isAnalysing = !this.isAnalysing;
    byId('analyse').setAttribute('aria-pressed', String(this.isAnalysing));
    if (this.isThinking) return;
    if (this.isAnalysing) await this.analyse();
    else await this.searcher.stop();
  }

  /** At full strength, until something else happens; the score goes to the graph. */
  async analyse() {
    const { game } = this;
    await this.searcher.stop();
    if (game.state.isOver || !this.isAnalysing || this.isThinking) return;
    const ply = game.shown;
    this.search.reset(game.position, game.state.side);
    this.opponent.weaken(false);
    await this.searcher.think(game.position, 'infinite', (line) => {
      this.search.tell(line);
      this.noteScore(ply);
    });
  }

  noteScore(ply) {
    const { score } = this.search;
    if (score === undefined || score === this.game.scores[ply]) return;
    this.game.scores[ply] = score;
    this.graph.draw(this.game);
  }

  /** Searches every position of the game for a moment, so that the graph shows where it turned. */
  async review() {
    await this.stopThinking();
    const { game } = this;
    const number = this.turn;
    this.opponent.weaken(false);
    const button = byId('review');
    for (let ply = 0; ply <= game.moves.length && number === this.turn; ply += 1) {
      button.textContent = `Reviewing: ${ply} of ${game.moves.length} moves`;
      const state = await this.desk.ask('game', game.fen, game.moves.slice(0, ply).join(' '));
      const position = { fen: game.fen, moves: game.moves.slice(0, ply) };
      if (state.isOver) {
        game.scores[ply] = { '1-0': 29999, '0-1': -29999 }[state.result] ?? 0;
      } else {
        this.search.reset(position, state.side);
        await this.searcher.think(position, reviewLimits, (line) => this.search.tell(line));
        if (this.search.score !== undefined && number === this.turn) game.scores[ply] = this.search.score;
      }
      this.graph.draw(game);
    }
    button.textContent = 'Review the game';
    if (number === this.turn) this.show();
  }
}

async function keepOffline() {
  if (!('serviceWorker' in navigator)) return;
  const registration = await navigator.serviceWorker.register('service_worker.js');
  await navigator.serviceWorker.ready;
  byId('offline-note').hidden = false;
  // A host that sends no headers of its own leaves the page unable to share memory until the service worker answers.
  if (!self.crossOriginIsolated && registration.active && !memory.get('reloaded', false) && !page.game?.moves.length) {
    memory.set('reloaded', true);
    location.reload();
  } else if (self.crossOriginIsolated) {
    memory.set('reloaded', false);
  }
}

const page = new Page();
window.vorka = page;  // for the tests, and for the curious
try {
  await page.start();
  // Without it the page needs its host, and nothing else.
  keepOffline().catch(() => {});
} catch (error) {
  byId('status').textContent = `The engine could not be started: ${error.message}`;
  throw error;
}
