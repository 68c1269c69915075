// Takes the pictures of the page that the documents show: pictures.mjs PAGE FOLDER.

import { join } from 'node:path';
import { loadGame, movesMade, openPage, set } from './tests/browser.mjs';

const [folder, pictures] = process.argv.slice(2);
if (!pictures) {
  console.error('usage: pictures.mjs PAGE FOLDER');
  process.exit(2);
}
// With a move in it that turns the game, and an attack to explain.
const game = '1. e4 e5 2. Nf3 Nc6 3. Bc4 Nf6 4. Ng5 d5 5. exd5 Nxd5 6. Nxf7 Kxf7 7. Qf3+ Ke6 8. Nc3 Ncb4 9. a3 Nxc2+ 10. Kd1 Nd4 *';

async function showGame(page) {
  await set(page, 'play-as', 'both');
  await loadGame(page, game);
  await movesMade(page, 20);
  await page.click('#review');
  await page.waitForFunction(() => document.getElementById('review').textContent === 'Review the game'
    && document.getElementById('graph').textContent.includes('turned'), null, { timeout: 120000 });
  await page.click('#analyse');
  await page.waitForFunction(() => document.querySelectorAll('.search-row .yes, .search-row .no').length > 8, null, { timeout: 60000 });
  await page.click('#analyse');
  await page.waitForFunction(() => !window.vorka.searcher.search);
}

/** Opens a term and reaches it by keyboard, so that its squares are lit. */
async function openTerm(page, name) {
  const head = page.locator(`#why details[data-term="${name}"] summary`);
  await head.focus();
  await page.keyboard.press('Enter');
  await page.mouse.move(1, 1);
}

async function take(name, options) {
  const it = await openPage(folder, { options: { reducedMotion: 'reduce' }, ...options });
  try {
    await showGame(it.page);
    await openTerm(it.page, 'knights');
    await it.page.evaluate(() => scrollTo(0, 0));
    await it.page.screenshot({ path: join(pictures, `${name}.png`) });
    if (it.complaints.length) throw new Error(it.complaints.join('\n'));
    console.log(join(pictures, `${name}.png`));
  } finally {
    await it.close();
  }
}

await take('web', { width: 1360, height: 1000 });
await take('web_dark', { width: 390, height: 1250, dark: true });
