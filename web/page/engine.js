// The two engines of the page, each in a worker of its own: the searcher, who speaks UCI, and the desk, who answers what
// the rules and the evaluation say while the other one thinks.

import { LineWriter, sharedMemory } from './shared_lines.js';

let compiling = null;
const compiled = () => (compiling ??= WebAssembly.compileStreaming(fetch('vorka.wasm')));

/** `fail` is told what has ended an engine that had been ready. */
async function startWorker(isDesk, shared, hear, fail) {
  const worker = new Worker('engine_worker.js', { type: 'module' });
  const ready = new Promise((resolve, reject) => {
    let isReady = false;
    const failed = (message) => (isReady ? fail : reject)(new Error(message));
    worker.addEventListener('error', (event) => failed(event.message));
    worker.addEventListener('message', ({ data }) => {
      if (data.failure !== undefined) failed(data.failure);
      else if (!data.isReady) hear(data);
      isReady ||= data.isReady;
      if (isReady) resolve();
    });
  });
  worker.postMessage({ start: true, compiled: await compiled(), shared, isDesk });
  return { worker, ready };
}

/** Asks the desk. Every answer is an object; a refusal has the field `error`. If the desk fails, what is asked then gets
 *  no answer but an exception, and another desk takes its place. */
export class Desk {
  static async start() {
    const desk = new Desk();
    desk.asked = new Map();
    desk.lines = [];
    desk.next = 0;
    await desk.launch();
    return desk;
  }

  async launch() {
    const take = ({ id, answer, line }) => {
      if (line !== undefined) this.lines.push(line);
      else this.asked.get(id)?.resolve(JSON.parse(answer));
      this.asked.delete(id);
    };
    this.started = startWorker(true, null, take, (error) => this.fail(error));
    const { worker, ready } = await this.started;
    this.worker = worker;
    await ready;
  }

  fail(error) {
    this.worker.terminate();
    for (const { reject } of this.asked.values()) reject(error);
    this.asked.clear();
    this.launch().catch(() => {});
  }

  async post(message) {
    const { worker } = await this.started;
    const id = this.next++;
    return new Promise((resolve, reject) => {
      this.asked.set(id, { resolve, reject });
      worker.postMessage({ id, ...message });
    });
  }

  ask(...lines) { return this.post({ question: lines.join('\n') }); }

  /** The nodes of the bench to a depth, and the nodes a second. */
  async bench(depth) {
    this.lines.length = 0;
    await this.post({ bench: depth });
    const [, nodes, speed] = /^(\d+) nodes (\d+) nps$/.exec(this.lines.at(-1));
    return { nodes: Number(nodes), speed: Number(speed) };
  }
}

/** Runs one search at a time. */
export class Searcher {
  constructor() {
    this.options = new Map();
    this.files = new Map();
    this.offers = [];
    this.search = null;
  }

  /** `hear` is told every line of the engine, `failed` what has ended one; another one takes its place. */
  async start({ hear = () => {}, failed = () => {} } = {}) {
    Object.assign(this, { hear, failed });
    await this.launch();
    await this.request('uci', 'uciok');
    return this;
  }

  async launch() {
    const shared = sharedMemory();
    this.writer = shared && new LineWriter(shared);
    const number = this.launches = (this.launches ?? 0) + 1;
    const started = await startWorker(false, shared, ({ line }) => number === this.launches && this.take(line),
      (error) => number === this.launches && this.fail(error));
    this.worker = started.worker;
    await started.ready;
  }

  send(line) {
    if (this.writer) this.writer.write(line);
    else this.worker.postMessage({ line });
  }

  request(line, last) {
    return new Promise((resolve, reject) => { this.awaited = { last, resolve, reject }; this.send(line); });
  }

  take(line) {
    this.hear(line);
    if (line.startsWith('option ')) this.offers.push(line);
    if (line === this.awaited?.last) this.awaited.resolve();
    if (!this.search) return;
    if (line.startsWith('info ') && !line.startsWith('info string')) this.search.tell(line);
    if (line.startsWith('bestmove ')) this.finish(line.split(' ')[1]);
  }

  finish(move) {
    const { resolve } = this.search;
    this.search = null;
    resolve(move === '0000' ? null : move);
  }

  /** Takes effect with the next search; a search that runs is not disturbed, the engine lets the line wait. */
  setOption(name, value) {
    this.options.set(name, value);
    this.send(`setoption name ${name} value ${value}`);
  }

  writeFile(name, text) {
    this.files.set(name, text);
    this.send(`file ${name} ${JSON.stringify(text)}`);
  }

  newGame() { this.send('ucinewgame'); }

  /** The best move, or null where there is none. A search that runs is stopped first, and its answer counts for nobody;
   *  one that waited for that while another one was asked for is not begun. Throws if there is no engine any more. */
  async think({ fen, moves }, limits, tell = () => {}) {
    const number = this.asked = (this.asked ?? 0) + 1;
    while (this.search || this.relaunching) await this.stop();
    if (this.loss) await this.replace();
    if (this.loss) throw this.loss;
    if (number !== this.asked) return null;
    const position = fen ? `fen ${fen}` : 'startpos';
    return new Promise((resolve) => {
      this.search = { tell: (line) => { this.noteLine(line); tell(line); }, resolve, best: null };
      this.finished = new Promise((done) => {
        const { resolve: inner } = this.search;
        this.search.resolve = (move) => { inner(move); done(); };
      });
      this.send(`position ${position}${moves.length ? ` moves ${moves.join(' ')}` : ''}`);
      this.send(`go ${limits}`);
    });
  }

  noteLine(line) {
    const move = / pv (\S+)/.exec(line);
    if (move) this.search.best = move[1];
  }

  /** Ends the search that runs as soon as it has a move to give. False if there is none to end yet. */
  hurry() {
    if (!this.search || !(this.writer || this.search.best)) return false;
    this.stop();
    return true;
  }

  /** Ends the search that runs, if any, and waits for its answer. An engine that can't hear while it thinks is ended
   *  itself, and another one takes its place: it knows the options, and has forgotten what it had found. */
  async stop() {
    if (this.relaunching) await this.relaunching;
    if (!this.search) return;
    if (this.writer) {
      this.send('stop');
      await this.finished;
      return;
    }
    await this.replace();
  }

  /** The engine is gone; what it has found so far is all there is. */
  fail(error) {
    this.awaited?.reject(error);
    this.replace();
    this.failed(error);
  }

  /** Puts another engine in place of this one. If none can be started, `loss` says why. */
  replace() {
    this.worker.terminate();
    this.launches += 1;  // what it has still said counts no more
    if (this.search) this.finish(this.search.best ?? '0000');
    this.relaunching ??= this.relaunch().then(() => null, (error) => error).then((loss) => {
      this.loss = loss;
      this.relaunching = null;
    });
    return this.relaunching;
  }

  async relaunch() {
    await this.launch();
    for (const [name, text] of this.files) this.send(`file ${name} ${JSON.stringify(text)}`);
    for (const [name, value] of this.options) this.send(`setoption name ${name} value ${value}`);
  }
}
