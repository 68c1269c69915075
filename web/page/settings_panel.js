// Every number that the two searches read, as fields that are made from the engine's own tables: those of the tournament
// search are options of UCI, those of the classic one stand in a settings file.

import { byId, element, memory } from './elements.js';
import { plainName } from './info_line.js';

// What the page has other places for, and what needs files that a browser hasn't got.
const elsewhere = ['UCI_LimitStrength', 'UCI_Elo', 'Personality', 'Style', 'Search', 'UCI_AnalyseMode', 'UCI_Opponent', 'Ponder',
  'OwnBook', 'Move Overhead', 'MultiPV'];
const file = '/settings.txt';
// MiB: what the module of WebAssembly has room for, and some.
const largestHash = 512;

/** { name, kind, least, most, initial } of the line of an option. */
export function readOffer(line) {
  const words = /^option name (.+?) type (\w+)(?: default (\S+))?(?: min (-?\d+) max (-?\d+))?/.exec(line);
  const [, name, kind, initial, least, most] = words;
  return { name, kind, initial, least: Number(least), most: Number(most), choices: [...line.matchAll(/ var (\S+)/g)].map(([, choice]) => choice) };
}

export class SettingsPanel {
  constructor(parent, searcher, rows) {
    this.searcher = searcher;
    this.changed = memory.get('settings', { options: {}, classic: {} });
    this.options = searcher.offers.map(readOffer)
      .filter(({ name, kind }) => (kind === 'spin' || kind === 'check') && !elsewhere.includes(name));
    this.rows = rows;
    this.filterField = element('input', { type: 'search', placeholder: 'Find a setting', ariaLabel: 'Find a setting' });
    const reset = element('button', { type: 'button', className: 'small' }, 'Defaults');
    this.lists = element('div', { className: 'settings-lists' });
    parent.replaceChildren(element('div', { className: 'settings-tools' }, this.filterField, reset), this.lists);
    this.filterField.addEventListener('input', () => this.filter());
    reset.addEventListener('click', () => this.reset());
    this.draw();
    this.apply();
  }

  draw() {
    this.lists.replaceChildren(
      element('h3', {}, 'Tournament search and engine'), ...this.options.map((option) => this.optionField(option)),
      element('h3', {}, 'Classic search and what both share'), ...this.rows.map((row) => this.classicField(row)));
  }

  optionField(option) {
    const isCheck = option.kind === 'check';
    const value = this.changed.options[option.name] ?? option.initial;
    const input = isCheck ? element('input', { type: 'checkbox', checked: value === 'true' })
      : element('input', { type: 'number', required: true, min: option.least,
        max: option.name === 'Hash' ? largestHash : option.most, value });
    return this.field(option.name, option.initial, [input], () => {
      const text = isCheck ? String(input.checked) : input.value;
      if (text === option.initial) delete this.changed.options[option.name];
      else this.changed.options[option.name] = text;
      this.searcher.setOption(option.name, text);
    });
  }

  classicField(row) {
    const values = this.changed.classic[row.name] ?? row.defaults;
    const inputs = values.map((value, i) => (row.isBoolean ? element('input', { type: 'checkbox', checked: value === 1 })
      : element('input', { type: 'number', required: true, min: row.least, max: row.most, value,
        ariaLabel: `${plainName(row.name)} ${i + 1}` })));
    return this.field(row.name, row.defaults.join(' '), inputs, () => {
      const now = inputs.map((input) => (row.isBoolean ? Number(input.checked) : Number(input.value)));
      if (now.join() === row.defaults.join()) delete this.changed.classic[row.name];
      else this.changed.classic[row.name] = now;
      this.writeClassic();
    });
  }

  field(name, initial, inputs, take) {
    const label = element('label', { className: 'setting', title: `default ${initial}` },
      element('span', {}, plainName(name)), ...inputs);
    label.dataset.name = name;
    const mark = () => label.classList.toggle('changed', name in this.changed.options || name in this.changed.classic);
    for (const input of inputs) {
      let { value } = input;
      input.addEventListener('change', () => {
        if (!input.checkValidity()) {
          byId('settings-error').textContent =
            `${plainName(name)} takes a whole number from ${input.min} to ${input.max}. It stays ${value}.`;
          input.value = value;
          return;
        }
        byId('settings-error').textContent = '';
        value = input.value;
        take();
        mark();
        memory.set('settings', this.changed);
      });
    }
    mark();
    return label;
  }

  writeClassic() {
    const text = this.rows.map(({ name, defaults, isBoolean }) => {
      const values = this.changed.classic[name] ?? defaults;
      return `${name}=${isBoolean ? values[0] === 1 : values.join(' ')}\n`;
    });
    this.searcher.writeFile(file, text.join(''));
    this.searcher.setOption('Settings File', file);
  }

  /** What was changed in an earlier visit. */
  apply() {
    for (const [name, value] of Object.entries(this.changed.options)) this.searcher.setOption(name, value);
    if (Object.keys(this.changed.classic).length) this.writeClassic();
  }

  reset() {
    for (const name of Object.keys(this.changed.options)) {
      this.searcher.setOption(name, this.options.find((option) => option.name === name).initial);
    }
    this.changed = { options: {}, classic: {} };
    memory.set('settings', this.changed);
    this.writeClassic();
    byId('settings-error').textContent = '';
    this.draw();
    this.filter();
  }

  filter() {
    const words = this.filterField.value.toLowerCase().split(/\s+/);
    for (const field of this.lists.querySelectorAll('.setting')) {
      field.hidden = !words.every((word) => plainName(field.dataset.name).toLowerCase().includes(word));
    }
  }
}
