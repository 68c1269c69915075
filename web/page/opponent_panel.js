// Who one plays against: strength, personality, style, search, clocks.

import { byId, element, memory } from './elements.js';
import { readOffer } from './settings_panel.js';

const step = 50;

export class OpponentPanel {
  /** `changed` is told what has changed: 'playAs', 'control', 'mind' for what an analysis thinks with, or 'play'. */
  constructor(searcher, changed) {
    this.searcher = searcher;
    const offers = new Map(searcher.offers.map(readOffer).map((offer) => [offer.name, offer]));
    const { least, most } = offers.get('UCI_Elo');
    this.strongest = most + step;  // one step beyond what is limited
    Object.assign(byId('strength'), { min: least, max: this.strongest });
    for (const [id, name] of [['personality', 'Personality'], ['search-kind', 'Search']]) {
      byId(id).replaceChildren(...offers.get(name).choices.map((choice) => element('option', { value: choice }, choice)));
    }
    this.bind('play-as', 'white', 'playAs');
    this.bind('control', '', 'control', () => this.labelThink());
    this.bind('think', '1000', 'play', () => this.labelThink());
    this.bind('strength', String(this.strongest), 'play', () => {
      this.label('strength', this.isLimited ? `about ${byId('strength').value}` : 'full');
      if (this.isLimited) searcher.setOption('UCI_Elo', byId('strength').value);
    });
    this.bind('personality', 'Default', 'mind', () => searcher.setOption('Personality', byId('personality').value));
    this.bind('style', '0', 'mind', () => {
      const value = Number(byId('style').value);
      this.label('style', value === 0 ? 'as the personality' : value < 0 ? `quiet ${-value}` : `sharp ${value}`);
      searcher.setOption('Style', value);
    });
    this.bind('search-kind', 'Classic', 'mind', () => searcher.setOption('Search', byId('search-kind').value));
    this.changed = changed;
  }

  bind(id, initial, what, take = () => {}) {
    const input = byId(id);
    input.value = memory.get(id, initial);
    if (input.value === '' && initial !== '') input.value = initial;
    take();
    input.addEventListener('input', () => {
      memory.set(id, input.value);
      take();
      this.changed(what);
    });
  }

  label(id, text) {
    byId(`${id}-text`).textContent = text;
    byId(id).setAttribute('aria-valuetext', text);
  }

  /** With clocks the engine parts its time itself. */
  labelThink() {
    byId('think').disabled = this.control !== null;
    this.label('think', this.control ? 'by the clock' : `at most ${(this.thinkTime / 1000).toFixed(1)} s`);
  }

  get playAs() { return byId('play-as').value; }
  get control() { return byId('control').value || null; }
  get thinkTime() { return Number(byId('think').value); }
  get isLimited() { return Number(byId('strength').value) < this.strongest; }
  /** The personality with which the evaluation looks, as a name or a number. */
  get eyes() { return Number(byId('style').value) !== 0 ? byId('style').value : byId('personality').value; }
  get description() {
    const { value } = byId('personality');
    return `${value === 'Default' ? '' : `${value}, `}${this.isLimited ? `about ${byId('strength').value}` : 'full strength'}`;
  }

  /** Whether the next search is held to the strength; an analysis is not. */
  weaken(isGame) { this.searcher.setOption('UCI_LimitStrength', isGame && this.isLimited); }
}
