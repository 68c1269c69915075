// The page: puts the parts together, and decides who moves when.

import { BoardView } from './board_view.js';
import { Clocks } from './clocks.js';
import { byId, enable, memory } from './elements.js';
import { Desk, Searcher } from './engine.js';
import { Game } from './game.js';
import { moveText, showMoves } from './move_list.js';
import { OpponentPanel } from './opponent_panel.js';
import { reviewGame } from './review.js';
import { ScoreGraph } from './score_graph.js';
import { SearchPanel } from './search_panel.js';
import { SettingsPanel } from './settings_panel.js';
import { watchBoard } from './small_board.js';
import { TextDialog } from './text_dialog.js';
import { useTheme } from './theme.js';
import { TypedMove } from './typed_move.js';
import { WhyPanel } from './why_panel.js';

const other = { white: 'black', black: 'white' };
const sideNames = { white: 'White', black: 'Black' };

class Page {
  isThinking = false;   // about the next move of the game
  isAnalysing = false;  // whenever nothing else is to be searched
  isReviewing = false;
  isMoving = false;     // the position that is known is not yet the one after a player's move
  isWaiting = false;    // it is Vorka's turn, and it moves when it is told to
  hasBegun = false;     // the clocks run from the first move on
  isHurried = false;    // somebody wants the move now, and the search has none yet
  trouble = '';         // what has gone wrong since the last act
  turn = 0;             // of those who search for the game; a search of an earlier one counts no more
  acts = Promise.resolve();

  async start() {
    useTheme(byId('theme'));
    [this.desk, this.searcher] = await Promise.all([Desk.start(), new Searcher().start({ failed: (error) => this.engineFailed(error) })]);
    this.game = new Game(this.desk);
    this.search = new SearchPanel(byId('search'), this.desk);
    this.opponent = new OpponentPanel(this.searcher, (what) => { this.changing = this.act(() => this.opponentChanged(what)); });
    const { settings } = await this.desk.ask('settings');
    this.settings = new SettingsPanel(byId('settings'), this.searcher, settings);
    this.board = new BoardView(byId('board'), this.game,
      { onMove: (uci) => this.act(() => this.playerMoves(uci)), say: (text) => { byId('speech').textContent = text; } });
    this.why = new WhyPanel(byId('why'), this.desk, (squares) => this.board.light(squares));
    this.graph = new ScoreGraph(byId('graph'), (count) => this.look(() => count));
    this.clocks = new Clocks({ white: byId('clock-bottom'), black: byId('clock-top') }, (side) => this.flagFell(side));
    this.text = new TextDialog(this.game, () => this.names, (read) => this.load(read));
    this.typed = new TypedMove(this.game, () => this.refusal, (uci) => this.act(() => this.playerMoves(uci)));
    this.game.addEventListener('change', () => this.show());
    watchBoard(byId('board'), byId('why-panel'));
    this.listen();
    if (!await this.restore()) await this.newGame();
    document.documentElement.dataset.ready = String(Math.round(performance.now()));
  }

  /** What is asked for is done one after the other: each act finds the game as the last one has left it. None waits for a
   *  search to end by itself, nor for another act. */
  act(what) {
    return this.queue(() => {
      this.trouble = '';
      return what();
    });
  }

  /** The same for what nobody has asked for. */
  queue(what) {
    const done = this.acts.then(what);
    this.acts = done.catch((error) => {
      this.isMoving = false;
      this.tellTrouble('Something went wrong', error);
    });
    return done;
  }

  /** Nothing that fails keeps the page from going on. */
  tellTrouble(what, error) {
    this.trouble = ` ${what}: ${error.message}.`;
    this.show();
  }

  engineFailed(error) {
    this.setAnalysing(false);
    if (this.isReviewing) {
      this.turn += 1;
      this.isReviewing = false;
    }
    this.tellTrouble('The engine has failed, and another one takes its place', error);
  }

  listen() {
    const on = (id, what) => byId(id).addEventListener('click', () => this.act(what));
    on('new-game', () => this.newGame());
    on('take-back', () => this.takeBack());
    on('flip', () => this.flip());
    on('analyse', () => this.toggleAnalysis());
    on('resign', () => this.resign());
    on('review', () => this.review());
    byId('move-now').addEventListener('click', () => this.moveNow());
    byId('to-start').addEventListener('click', () => this.look(() => 0));
    byId('back').addEventListener('click', () => this.look(({ shown }) => shown - 1));
    byId('forward').addEventListener('click', () => this.look(({ shown }) => shown + 1));
    byId('to-end').addEventListener('click', () => this.look(({ moves }) => moves.length));
    on('open-text', () => this.text.open());
    addEventListener('pagehide', () => this.keep());
    document.addEventListener('visibilitychange', () => document.hidden && this.keep());  // a phone may end the page then
  }

  get isPlayersTurn() {
    return this.opponent.playAs === 'both' || this.opponent.playAs === this.game.state.side;
  }

  /** Why nobody may move by hand now; nothing if somebody may. At an earlier position both sides' men may be moved. */
  get refusal() {
    if (this.game.isOver) return 'The game is over.';
    if (this.isThinking || this.isMoving) return 'Vorka is thinking.';
    return this.isPlayersTurn || !this.game.atEnd ? null : 'It is Vorka\'s turn.';
  }

  get names() {
    const { playAs } = this.opponent;
    const nameOf = (side) => (playAs === side || playAs === 'both' ? 'You' : 'Vorka');
    return { white: nameOf('white'), black: nameOf('black') };
  }

  // --- Showing ---

  show() {
    const { game } = this;
    this.shown = this.board.show(this.refusal === null ? game.state.side : null);
    this.why.show(game, this.opponent.eyes);
    this.graph.draw(game);
    showMoves(game, (count) => this.look(() => count));
    this.showNames();
    byId('status').textContent = this.statusText();
    byId('move-now').textContent = this.isWaiting ? 'Let Vorka move' : 'Move now';
    byId('move-now').classList.toggle('primary', this.isWaiting);
    enable('take-back', game.moves.length > 0);
    enable('move-now', this.isThinking || this.isWaiting);
    enable('resign', !game.hasEnded && game.moves.length > 0 && this.opponent.playAs in other);
    enable('review', !this.isThinking);
    this.keep();
  }

  statusText() { return this.gameText() + this.trouble; }

  gameText() {
    const { game } = this;
    const last = game.shown ? `${moveText(game, game.shown)}. ` : '';
    if (game.isOver) return `${last}${game.result}: ${game.reason}.`;
    const check = game.state.isCheck ? 'Check. ' : '';
    if (this.isThinking && game.atEnd) return `${last}${check}Vorka is thinking …`;
    const waits = this.isWaiting && game.atEnd ? ' Vorka waits for “Let Vorka move”.' : '';
    return `${last}${check}${sideNames[game.state.side]} to move.${waits}`;
  }

  showNames() {
    const bottom = this.board.orientation === 'w' ? 'white' : 'black';
    const { names } = this;
    const nameOf = (side) => (names[side] === 'You' ? 'You' : `Vorka (${this.opponent.description})`);
    byId('name-bottom').textContent = `${sideNames[bottom]}: ${nameOf(bottom)}`;
    byId('name-top').textContent = `${sideNames[other[bottom]]}: ${nameOf(other[bottom])}`;
    for (const [place, side] of [['bottom', bottom], ['top', other[bottom]]]) {
      byId(`clock-${place}`).setAttribute('aria-label', `${sideNames[side]}'s clock`);
    }
    this.clocks.elements = { [bottom]: byId('clock-bottom'), [other[bottom]]: byId('clock-top') };
    this.clocks.draw();
  }

  async flip() {
    await this.board.flip();
    this.showNames();
  }

  /** Turns the board so that the player's men stand below. */
  async turnBoard() { await this.board.turnTo(this.opponent.playAs === 'black' ? 'black' : 'white'); }

  // --- From visit to visit ---

  keep() {
    const { game, clocks, hasBegun, isWaiting } = this;
    memory.set('game', { ...game.kept, clocks: clocks.kept, hasBegun, isWaiting });
  }

  /** Whether there was a game, which goes on. */
  async restore() {
    const kept = memory.get('game', null);
    if (!kept) return false;
    try {
      this.clocks.set(this.opponent.control);
      this.clocks.restore(kept.clocks);
      await this.turnBoard();
      if (!await this.game.restore(kept)) return false;
    } catch {
      return false;  // another version of the page has kept something else
    }
    this.hasBegun = kept.hasBegun;
    this.isWaiting = kept.isWaiting;
    this.goOn();
    return true;
  }

  // --- Playing ---

  async newGame() {
    this.board.lock();
    await this.stopThinking();
    this.searcher.newGame();
    this.clocks.set(this.opponent.control);
    this.hasBegun = this.isWaiting = false;
    await this.turnBoard();
    await this.game.begin(this.names);
    this.search.reset(this.game.position, this.game.state.side);
    this.goOn();
  }

  /** `read` puts another position or game on the board, or says why it can't. */
  load(read) {
    return this.act(async () => {
      const error = await read();
      if (!error) await this.loaded();
      return error;
    });
  }

  /** Who has read a whole game wants to see it first. */
  async loaded() {
    await this.stopThinking();
    this.searcher.newGame();
    this.clocks.set(this.opponent.control);
    this.hasBegun = false;
    this.isWaiting = this.game.moves.length > 0 && !this.game.hasEnded && !this.isPlayersTurn;
    this.search.reset(this.game.position, this.game.state.side);
    this.goOn();
  }

  async playerMoves(uci) {
    if (this.refusal) {
      this.show();
      return;
    }
    const { game } = this;
    this.isMoving = true;
    if (!game.atEnd) this.clocks.backTo(game.shown);
    this.clocks.press();
    if (!game.isOver) {  // the flag has not fallen at the last moment
      await this.stopThinking();
      await game.play(uci, game.shown);
      this.hasBegun = true;
      this.isWaiting = false;
    }
    this.isMoving = false;
    this.goOn();
  }

  /** Whatever has happened, the game goes on: the engine moves if it is its turn, or else it may analyse. */
  goOn() {
    const { game, clocks } = this;
    const isVorkasTurn = game.atEnd && !game.hasEnded && !this.isPlayersTurn;
    if (!isVorkasTurn) this.isWaiting = false;
    const mayRun = this.hasBegun || isVorkasTurn;
    if (game.hasEnded || this.isWaiting || !mayRun) clocks.pause();
    else clocks.run(game.final.side, game.moves.length);
    if (isVorkasTurn && !this.isWaiting) {
      this.engineMoves();
      return;
    }
    this.show();
    this.analyse();
  }

  async engineMoves() {
    const { game } = this;
    if (this.opponent.playAs === 'none') this.setAnalysing(false);  // there is no moment for it
    this.turn += 1;
    const number = this.turn;
    this.hasBegun = this.isThinking = true;
    this.isHurried = false;
    this.show();
    await this.shown;
    if (number !== this.turn) return;
    const position = { fen: game.fen, moves: game.moves };
    const ply = position.moves.length;
    this.search.reset(position, game.final.side);
    const limits = this.clocks.isOn ? this.clocks.limits : `movetime ${this.opponent.thinkTime}`;
    this.opponent.weaken(true);
    const thinking = this.searcher.think(position, limits, (line) => {
      this.search.tell(line);
      this.hurry();
    });
    this.hurry();
    const move = await thinking.catch((error) => this.tellTrouble('The engine can\'t be started', error));
    const { score } = this.search;
    await this.queue(async () => {
      if (number !== this.turn) return;  // somebody has taken back, or begun another game
      this.clocks.press();
      if (number !== this.turn) return;  // its flag has fallen
      try {
        if (move) await game.play(move, ply);
      } finally {
        this.isThinking = false;
      }
      if (move && score !== undefined) game.scores[ply] = game.scores[ply + 1] = score;
      this.isWaiting = !move;
      this.goOn();
    });
  }

  /** Ends the search, whose result counts no more. */
  async stopThinking() {
    this.turn += 1;
    this.isThinking = this.isReviewing = false;
    await this.searcher.stop();
  }

  moveNow() {
    if (!this.isThinking) {
      this.act(() => this.letVorkaMove());
      return;
    }
    this.isHurried = true;
    this.hurry();
  }

  hurry() {
    if (this.isHurried) this.isHurried = !this.searcher.hurry();
  }

  async letVorkaMove() {
    await this.stopThinking();
    this.isWaiting = false;
    await this.game.showLast();
    this.goOn();
  }

  /** One's own move and the answer to it, or one move where there is no opponent. */
  async takeBack() {
    if (!this.game.moves.length) return;
    this.board.lock();
    await this.stopThinking();
    this.clocks.pause();
    const { game } = this;
    if (!game.atEnd) await game.showLast();
    const isAlone = !(this.opponent.playAs in other);
    await game.takeBack(isAlone || !this.isPlayersTurn || game.moves.length < 2 ? 1 : 2);
    this.clocks.backTo(game.moves.length);
    if (!game.moves.length) this.hasBegun = false;
    this.goOn();
  }

  /** `count` tells after how many moves of the game. */
  look(count) {
    return this.act(async () => {
      await this.game.show(count(this.game));
      this.analyse();
    });
  }

  async resign() {
    const side = this.opponent.playAs;
    if (side in other) await this.finish(side === 'white' ? '0-1' : '1-0', `${sideNames[side]} resigns`);
  }

  /** Who could not mate with the other one's help does not win. What thinks now thinks for nothing. */
  flagFell(side) {
    const late = `${sideNames[side]} has no time left`;
    const [result, reason] = this.game.final.canMate[other[side]] ? [side === 'white' ? '0-1' : '1-0', late]
      : ['1/2-1/2', `${late}, and ${sideNames[other[side]]} can't mate`];
    this.game.end(result, reason);
    this.turn += 1;
    this.act(() => this.finish(result, reason));
  }

  async finish(result, reason) {
    this.game.end(result, reason);
    this.board.lock();
    await this.stopThinking();
    await this.game.showLast();
    this.goOn();
  }

  async opponentChanged(what) {
    const { game } = this;
    if (what === 'playAs') {
      await this.stopThinking();
      this.isWaiting = false;
      game.name(this.names);
      await this.turnBoard();
      await game.showLast();
      this.goOn();
    } else if (what === 'control') {
      this.clocks.set(this.opponent.control);
      if (this.hasBegun && !game.hasEnded && !this.isWaiting) this.clocks.run(game.final.side, game.moves.length);
      this.keep();
    } else {
      this.show();
      if (what === 'mind') this.analyse();
    }
  }

  // --- Analysing ---

  setAnalysing(isAnalysing) {
    this.isAnalysing = isAnalysing;
    byId('analyse').setAttribute('aria-pressed', String(isAnalysing));
  }

  async toggleAnalysis() {
    this.setAnalysing(!this.isAnalysing);
    if (this.opponent.playAs === 'none' && !this.game.hasEnded) {  // what is watched waits meanwhile
      await this.stopThinking();
      this.isWaiting = this.isAnalysing;
      await this.game.showLast();
      this.goOn();
    } else if (!this.isThinking) {  // or else it begins after Vorka's move
      await this.stopThinking();
      this.analyse();
    }
  }

  /** At full strength, until something else happens; the score goes to the graph. */
  async analyse() {
    const { game } = this;
    if (!this.isAnalysing || this.isThinking || this.isReviewing) return;
    if (game.isDecided) {
      await this.searcher.stop();
      return;
    }
    const ply = game.shown;
    const { scores } = game;
    this.search.reset(game.position, game.state.side);
    this.opponent.weaken(false);
    await this.searcher.think(game.position, 'infinite', (line) => {
      this.search.tell(line);
      const { score } = this.search;
      if (score === undefined || score === scores[ply]) return;
      scores[ply] = score;
      this.graph.draw(game);
    });
  }

  /** Begins a review, or ends the one that runs. */
  async review() {
    if (this.isThinking) return;
    const wasReviewing = this.isReviewing;
    this.setAnalysing(false);
    await this.stopThinking();
    if (wasReviewing) return;
    this.isReviewing = true;
    this.opponent.weaken(false);
    this.runReview(this.turn);
  }

  async runReview(turn) {
    const { game } = this;
    const button = byId('review');
    await reviewGame({ game, desk: this.desk, searcher: this.searcher, search: this.search,
      isOn: () => turn === this.turn,
      told: (ply) => {
        button.textContent = `Reviewing: ${ply} of ${game.moves.length} moves. Stop`;
        this.graph.draw(game);
      } });
    if (!this.isReviewing || turn === this.turn) button.textContent = 'Review the game';
    if (turn !== this.turn) return;
    this.isReviewing = false;
    this.show();
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
