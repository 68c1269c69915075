// Lines from the page to a worker that never comes back to its event loop, through memory that both see: a ring of
// bytes, and the numbers of bytes written and read so far. Only a page that is isolated from other origins may share
// memory; the service worker sees to that (service_worker.js).

const capacity = 1 << 18;
const header = 8;
const written = 0;
const read = 1;

export function sharedMemory() {
  return self.crossOriginIsolated && typeof SharedArrayBuffer === 'function'
    ? new SharedArrayBuffer(header + capacity) : null;
}

export class LineWriter {
  constructor(shared) {
    this.counts = new Int32Array(shared, 0, 2);
    this.bytes = new Uint8Array(shared, header);
  }

  /** A line that is longer than the ring has room for would be cut in two; no page writes such. */
  write(line) {
    const text = new TextEncoder().encode(`${line}\n`);
    const at = Atomics.load(this.counts, written);
    if (text.length > capacity - (at - Atomics.load(this.counts, read))) throw new RangeError('too many lines wait');
    text.forEach((byte, i) => { this.bytes[(at + i) % capacity] = byte; });
    Atomics.store(this.counts, written, at + text.length);
    Atomics.notify(this.counts, written);
  }
}

export class LineReader {
  constructor(shared) {
    this.counts = new Int32Array(shared, 0, 2);
    this.bytes = new Uint8Array(shared, header);
  }

  waits() { return Atomics.load(this.counts, written) !== Atomics.load(this.counts, read); }

  /** The next line; waits for it. Lines are written whole. */
  read() {
    const from = Atomics.load(this.counts, read);
    Atomics.wait(this.counts, written, from);
    const text = [];
    let at = from;
    while (this.bytes[at % capacity] !== 10) text.push(this.bytes[at++ % capacity]);
    Atomics.store(this.counts, read, at + 1);
    return new TextDecoder().decode(new Uint8Array(text));
  }
}
