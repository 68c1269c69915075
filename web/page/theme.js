import { memory } from './elements.js';

/** Light and dark follow the system until the button says otherwise. */
export function useTheme(button) {
  const root = document.documentElement;
  const isDark = () => (root.dataset.theme ?? (matchMedia('(prefers-color-scheme: dark)').matches ? 'dark' : 'light')) === 'dark';
  const kept = memory.get('theme', null);
  if (kept) root.dataset.theme = kept;
  button.addEventListener('click', () => {
    root.dataset.theme = isDark() ? 'light' : 'dark';
    memory.set('theme', root.dataset.theme);
  });
}
