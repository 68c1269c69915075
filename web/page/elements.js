/** Makes an element: element('p', { className: 'note' }, 'text', child). */
export function element(tag, properties = {}, ...children) {
  const made = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (name in made) made[name] = value;
    else made.setAttribute(name, value);
  }
  made.append(...children);
  return made;
}

/** The same for drawings. */
export function shape(tag, attributes = {}, ...children) {
  const made = document.createElementNS('http://www.w3.org/2000/svg', tag);
  for (const [name, value] of Object.entries(attributes)) made.setAttribute(name, value);
  made.append(...children);
  return made;
}

export const byId = (id) => document.getElementById(id);

/** Whether a button can be pressed. The board takes the place of one that could not keep the keyboard. */
export function enable(id, isEnabled) {
  const button = byId(id);
  if (!isEnabled && document.activeElement === button) byId('board').focus({ preventScroll: true });
  button.disabled = !isEnabled;
}

/** Puts new elements into a parent, and the keyboard where it was among the old ones: on the element with the same
 *  `data-key`, or else on the current one or the first one that can be reached. */
export function renew(parent, ...children) {
  const held = parent.contains(document.activeElement) ? document.activeElement : null;
  parent.replaceChildren(...children);
  if (!held) return;
  const key = held.dataset.key ?? '';
  const next = parent.querySelector(`[data-key="${CSS.escape(key)}"]`) ?? parent.querySelector('[aria-current]')
    ?? parent.querySelector('button, summary, [tabindex]');
  next?.focus({ preventScroll: true });
}

/** What the page remembers from visit to visit; nothing where the browser keeps nothing. */
export const memory = {
  get(name, otherwise) {
    try {
      return JSON.parse(localStorage.getItem(`vorka.${name}`)) ?? otherwise;
    } catch {
      return otherwise;
    }
  },
  set(name, value) {
    try {
      localStorage.setItem(`vorka.${name}`, JSON.stringify(value));
    } catch {
      // It is forgotten.
    }
  },
};
