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
    this.increment = increment * 1000;
    this.left = { white: minutes * 60000, black: minutes * 60000 };
    this.running = null;
    this.draw();
  }

  /** The side to move changes; the one that has moved gets its increment. */
  run(side) {
    this.tick();
    if (this.isOn && this.running && side && side !== this.running) this.left[this.running] += this.increment;
    this.running = this.isOn ? side : null;
    this.since = performance.now();
    this.draw();
  }

  pause() {
    this.tick();
    this.running = null;
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
