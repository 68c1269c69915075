// Where the panels stand under the board, as on a phone, a smaller board stays above the panel that lights its squares.

const besideEachOther = matchMedia('(min-width: 860px)');
const largest = { ofHeight: 0.36, ofWidth: 0.6 };

export function watchBoard(board, panel) {
  const place = board.parentElement;
  const root = document.documentElement;
  let isDue = false;
  const look = () => {
    isDue = false;
    const size = Math.min(innerHeight * largest.ofHeight, innerWidth * largest.ofWidth);
    const rows = panel.getBoundingClientRect();
    const isSmall = !besideEachOther.matches && place.getBoundingClientRect().bottom < size
      && rows.top < innerHeight && rows.bottom > 1.3 * size;
    place.classList.toggle('small', isSmall);
    place.style.setProperty('--small', `${Math.round(size)}px`);
    root.style.scrollPaddingTop = isSmall ? `${Math.round(size) + 16}px` : '';  // what is reached by Tab is not under it
  };
  const soon = () => {
    if (!isDue) requestAnimationFrame(look);
    isDue = true;
  };
  addEventListener('scroll', soon, { passive: true });
  addEventListener('resize', soon);
  look();
}
