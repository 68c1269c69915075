// The worker of the engine: it hands the lines of the page to the module of WebAssembly and the module's lines to the
// page. Where memory may be shared (see shared_lines.js) the engine runs for good and waits for its next line; elsewhere
// it runs as long as there are lines, and is called again with the next one.

import createVorka from './vorka.mjs';
import { LineReader } from './shared_lines.js';

const waiting = [];
let reader = null;
let engine = null;
const started = new Promise((resolve) => {
  self.addEventListener('message', ({ data }) => {
    if (data.start) resolve(data);
    else if (data.question !== undefined) answer(data);
    else if (data.bench !== undefined) bench(data);
    else take(data.line);
  });
});

function take(line) {
  waiting.push(line);
  if (engine) run();
}

/** What ends the engine is told: an exception at the top of a module need not reach the page. */
function run() {
  try {
    engine._vorka_run();
  } catch (error) {
    self.postMessage({ failure: String(error) });
  }
}

function answer({ id, question }) {
  self.postMessage({ id, answer: engine.ccall('vorka_answer', 'string', ['string'], [question]) });
}

function bench({ id, bench: depth }) {
  engine._vorka_bench(depth);
  self.postMessage({ id, answer: '{}' });
}

/** `file NAME TEXT`, where TEXT is a string of JSON, writes a file that the engine can open; it is no word of UCI. */
function writeFile(line) {
  const [, name, text] = /^file (\S+) (.*)$/.exec(line);
  engine.FS.writeFile(name, JSON.parse(text));
}

function nextLine() {
  for (;;) {
    const line = reader ? reader.read() : waiting.shift();
    if (line === undefined) return null;
    if (!line.startsWith('file ')) return line;
    writeFile(line);
  }
}

const { compiled, shared, isDesk } = await started;
if (shared) reader = new LineReader(shared);
engine = await createVorka({
  instantiateWasm(imports, receive) {
    WebAssembly.instantiate(compiled, imports).then((instance) => receive(instance, compiled));
    return {};
  },
  print: (line) => self.postMessage({ line }),
  printErr: (line) => self.postMessage({ line: `info string ${line}` }),
  inputWaits: () => (reader ? reader.waits() : waiting.length > 0),
  readLine: nextLine,
});
self.postMessage({ isReady: true });
if (!isDesk) run();
