// The clocks: when they run, and what a flag does.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { beginGame, clickSquare, loadPosition, movesMade, says, set, typeAndHurry } from './browser.mjs';
import { pageOfFile } from './page_of_file.mjs';

let page;
pageOfFile((opened) => { page = opened; }, { think: 100, control: '15+10' });

const left = (side) => page.evaluate((whose) => window.vorka.clocks.left[whose], side);
const running = () => page.evaluate(() => window.vorka.clocks.running);
/** So many milliseconds, and the flag falls. */
const hurry = (side, time) => page.evaluate(([whose, rest]) => { window.vorka.clocks.left[whose] = rest; }, [side, time]);

test('A flag ends the game also while somebody looks back', async () => {
  await beginGame(page);
  await typeAndHurry(page, 'e4');
  await page.click('#to-start');
  await page.waitForFunction(() => window.vorka.game.shown === 0);
  await hurry('white', 50);
  await says(page, 'status', /0-1: White has no time left/);
  assert.equal(await page.evaluate(() => window.vorka.game.atEnd), true);
});

test('Moves that are taken back give the time back', async () => {
  await page.click('#take-back');
  await page.waitForFunction(() => window.vorka.game.moves.length === 0);
  assert.ok(await left('white') > 800000 && await left('black') > 800000);
  await typeAndHurry(page, 'd4');
  await says(page, 'status', /White to move/);
  assert.equal(await running(), 'white');
});

test('Each move brings its increment', async () => {
  await hurry('white', 60000);
  await typeAndHurry(page, 'c4');
  assert.ok(await left('white') > 60000 && await left('white') < 70000);
});

test('A flag closes the choice of what a pawn becomes', async () => {
  await loadPosition(page, '8/P6k/7p/8/8/8/8/K7 w - - 0 1');
  await page.waitForFunction(() => window.vorka.board.side === 'white');
  await clickSquare(page, 'a1');
  await clickSquare(page, 'a2');
  await page.waitForFunction(() => window.vorka.isThinking && window.vorka.search.score !== undefined);
  await page.click('#move-now');
  await movesMade(page, 2);
  await clickSquare(page, 'a7');
  await clickSquare(page, 'a8');
  await page.locator('#promotion').waitFor({ state: 'visible' });
  await hurry('white', 50);
  await says(page, 'status', /0-1: White has no time left/);
  await page.locator('#promotion').waitFor({ state: 'hidden' });
  assert.equal(await page.evaluate(() => window.vorka.board.side), null);
  assert.equal(await page.evaluate(() => window.vorka.game.moves.length), 2);
});

test('The clocks of the list hold for a position that is loaded', async () => {
  await loadPosition(page, '7k/8/8/8/8/8/R7/K7 w - - 0 1');
  await page.waitForFunction(() => window.vorka.board.side === 'white');
  assert.equal(await page.textContent('#clock-bottom'), '15:00');
  assert.equal(await running(), null);
});

test('Nobody loses on time to a lone king', async () => {
  await typeAndHurry(page, 'Ra3');
  await hurry('white', 50);
  await says(page, 'status', /1\/2-1\/2: White has no time left, and Black can't mate/);
});

test('Clocks that are chosen in the middle of a game run', async () => {
  await set(page, 'control', '');
  await beginGame(page);
  await typeAndHurry(page, 'e4');
  assert.ok(await page.locator('#clock-bottom').isHidden());
  await set(page, 'control', '1+0');
  assert.equal(await running(), 'white');
  await page.waitForFunction(() => /^0:5\d$/.test(document.getElementById('clock-bottom').textContent), null, { timeout: 10000 });
  await set(page, 'control', '');
});
