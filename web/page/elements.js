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
