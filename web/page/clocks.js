// The clocks of a game against the engine. Without a time control they stand still and are not shown.

export class Clocks {
  /** `fell` is told whose flag has fallen. */
  constructor(elements, fell) {
    this.elements = elements;
    this.fell = fell;
    this.set(null);
    setInterval(() => this.tick(), 100);
  }

  /** "3+2": minutes, and seconds for each move; null for no clocks. */
  set(control) {
    const [minutes, increment] = (control ?? '0+0').split('+').map(Number);
    this.isOn = Boolean(control);
    this.control = control;
    this.increment = increment * 1000;
    this.full = { white: minutes * 60000, black: minutes * 60000 };
    this.left = { ...this.full };
    this.atPly = [];  // what was left when the thought about the move after so many ones began
    this.running = null;
    this.draw();
  }

  /** The side thinks about the move after so many ones. */
  run(side, ply) {
    this.tick();
    if (!this.isOn || this.running === side) return;
    this.running = side;
    this.atPly.length = Math.min(this.atPly.length, ply);
    this.atPly[ply] = { ...this.left };
    this.since = performance.now();
    this.draw();
  }

  /** The side that thinks has moved, and gets its increment. */
  press() {
    this.tick();
    if (this.running) this.left[this.running] += this.increment;
    this.running = null;
    this.draw();
  }

  pause() {
    this.tick();
    this.running = null;
    this.draw();
  }

  /** The times as they were when the thought about the move after so many ones began. */
  backTo(ply) {
    this.running = null;
    this.left = { ...(this.atPly[ply] ?? this.full) };
    this.draw();
  }

  tick() {
    if (!this.running) return;
    const now = performance.now();
    this.left[this.running] -= now - this.since;
    this.since = now;
    if (this.left[this.running] <= 0) {
      const side = this.running;
      this.left[side] = 0;
      this.running = null;
      this.fell(side);
    }
    this.draw();
  }

  /** The words of `go`. */
  get limits() {
    const { white, black } = this.left;
    return `wtime ${Math.ceil(white)} btime ${Math.ceil(black)} winc ${this.increment} binc ${this.increment}`;
  }

  /** For another visit. The time between is nobody's. */
  get kept() {
    this.tick();
    return { control: this.control, left: this.left, atPly: this.atPly };
  }

  /** What was kept under another time control counts no more. */
  restore({ control, left, atPly }) {
    if (control === this.control) Object.assign(this, { left, atPly });
    this.draw();
  }

  draw() {
    for (const [side, clock] of Object.entries(this.elements)) {
      clock.hidden = !this.isOn;
      const seconds = Math.ceil(this.left[side] / 1000);
      const text = `${Math.floor(seconds / 60)}:${String(seconds % 60).padStart(2, '0')}`;
      if (clock.textContent !== text) clock.textContent = text;
      clock.classList.toggle('running', this.running === side);
      clock.classList.toggle('short', this.isOn && this.left[side] < 20000);
    }
  }
}
