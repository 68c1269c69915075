// The choice of what a pawn becomes.

const names = { q: 'queen', r: 'rook', b: 'bishop', n: 'knight' };

/** The move of those that the player chooses, or null. Escape takes the move back. */
export function choosePromotion(side, moves) {
  const dialog = document.getElementById('promotion');
  dialog.replaceChildren(...Object.entries(names).map(([letter, name]) => {
    const button = document.createElement('button');
    button.value = moves.find(({ uci }) => uci[4] === letter).uci;
    button.ariaLabel = name;
    button.title = name;
    button.innerHTML = `<svg viewBox="0 0 40 40" aria-hidden="true"><use href="#${side[0]}${letter}"></use></svg>`;
    button.addEventListener('click', () => dialog.close(button.value));
    return button;
  }));
  dialog.returnValue = '';
  dialog.showModal();
  return new Promise((resolve) => {
    dialog.addEventListener('close', () => resolve(dialog.returnValue || null), { once: true });
  });
}

/** Takes the choice away, if somebody has it. */
export function cancelPromotion() {
  document.getElementById('promotion').close();
}
