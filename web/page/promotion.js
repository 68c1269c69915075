// The choice of what a pawn becomes.

const names = { q: 'queen', r: 'rook', b: 'bishop', n: 'knight' };

/** The move of those that the player chooses, or null. Escape takes the move back, and so does a press beside the choice. */
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
  // The press that has put the pawn down may still come to its end here; it counts for nothing.
  let isBeside = false;
  // To the board, whose man may still be on its way, the end of a press here would mean that it was dropped.
  dialog.onmouseup = dialog.ontouchend = (event) => event.stopPropagation();
  dialog.onpointerdown = (event) => { isBeside = isOutside(dialog, event); };
  dialog.onclick = (event) => { if (isBeside && isOutside(dialog, event)) dialog.close(); };
  dialog.returnValue = '';
  dialog.showModal();
  return new Promise((resolve) => {
    dialog.addEventListener('close', () => resolve(dialog.returnValue || null), { once: true });
  });
}

function isOutside(dialog, { clientX, clientY }) {
  const { left, right, top, bottom } = dialog.getBoundingClientRect();
  return clientX < left || clientX > right || clientY < top || clientY > bottom;
}

/** Takes the choice away, if somebody has it. */
export function cancelPromotion() {
  document.getElementById('promotion').close();
}
