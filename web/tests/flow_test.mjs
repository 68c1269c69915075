// Who moves when: what is pressed while Vorka thinks, games that are loaded, taken back, watched, and kept for another visit.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { beginGame, loadGame, loadPosition, moves, movesMade, ready, says, set, typeAndHurry, typeMove } from './browser.mjs';
import { pageOfFile } from './page_of_file.mjs';

let page;
const it = pageOfFile((opened) => { page = opened; }, { think: 100 });

const count = () => page.evaluate(() => window.vorka.game.moves.length);
const isDisabled = (id) => page.locator(`#${id}`).isDisabled();
const isPressed = async () => (await page.getAttribute('#analyse', 'aria-pressed')) === 'true';
const isSearching = () => page.waitForFunction(() => window.vorka.searcher.search && document.querySelectorAll('.search-row').length >= 3);

test('Nothing but a move comes of what is pressed while Vorka thinks', async () => {
  await beginGame(page);
  await set(page, 'think', '10000');
  await typeMove(page, 'e4');
  await page.waitForFunction(() => window.vorka.isThinking && window.vorka.search.score !== undefined);
  assert.ok(await isDisabled('review'));
  await page.click('#analyse');
  await page.click('#back');
  await page.waitForFunction(() => window.vorka.game.shown === 0);
  await set(page, 'think', '100');
  await page.click('#move-now');
  await movesMade(page, 2);
  await isSearching();  // the analysis begins when it may
  assert.ok(await isPressed());
  await typeMove(page, 'd4');
  await movesMade(page, 4);
  await isSearching();
});

test('A review ends the analysis, and can be ended itself', async () => {
  await page.click('#review');
  assert.equal(await isPressed(), false);
  await page.waitForFunction(() => document.getElementById('review').textContent.startsWith('Reviewing'));
  await page.click('#review');
  await says(page, 'review', /^Review the game$/);
  await typeMove(page, 'a3');
  await movesMade(page, 6);
});

test('An analysis ends a review', async () => {
  await page.click('#review');
  await page.click('#analyse');
  await says(page, 'review', /^Review the game$/);
  await isSearching();
  await page.click('#analyse');
  await page.waitForFunction(() => !window.vorka.searcher.search);
});

test('Whoever is in a hurry before the search has begun is heard', async () => {
  await beginGame(page);
  await set(page, 'think', '10000');
  await page.evaluate(() => {
    const { board } = window.vorka;
    board.show = async (side) => {  // as slow as where the men move
      await Object.getPrototypeOf(board).show.call(board, side);
      await new Promise((done) => { setTimeout(done, 150); });
    };
  });
  await typeMove(page, 'e4');
  await page.waitForFunction(() => window.vorka.isThinking);
  assert.equal(await page.evaluate(() => window.vorka.searcher.search), null);
  await page.click('#move-now');
  await movesMade(page, 2, 3000);
  await page.evaluate(() => { delete window.vorka.board.show; });
  await set(page, 'think', '100');
});

test('A search that ends without a move waits for another wish', async () => {
  await beginGame(page);
  await page.evaluate(() => { window.vorka.searcher.think = async () => null; });
  await typeMove(page, 'e4');
  await says(page, 'status', /Vorka waits for “Let Vorka move”/);
  await page.evaluate(() => { delete window.vorka.searcher.think; });
  await page.click('#move-now');
  await movesMade(page, 2);
});

/** As the browser ends a worker whose memory is gone, say. */
const kill = (who) => page.evaluate((name) => {
  const { worker } = window.vorka[name];
  worker.terminate();
  worker.dispatchEvent(new ErrorEvent('error', { message: 'out of memory' }));
}, who);

test('An engine that fails is told of, and replaced', async () => {
  await beginGame(page);
  await set(page, 'think', '10000');
  await typeMove(page, 'e4');
  await page.waitForFunction(() => window.vorka.searcher.search);
  await kill('searcher');
  await says(page, 'status', /The engine has failed, and another one takes its place: out of memory\./);
  await set(page, 'think', '100');
  await page.click('#new-game');
  await says(page, 'status', /^White to move\.$/);
  await typeMove(page, 'e4');
  await movesMade(page, 2);
  await page.click('#analyse');
  await isSearching();
  await kill('searcher');
  await says(page, 'status', /The engine has failed/);
  assert.equal(await isPressed(), false);
});

test('A desk that fails is told of, and replaced', async () => {
  await page.evaluate(() => {
    const { desk } = window.vorka;
    desk.started.then(({ worker }) => { worker.postMessage = () => {}; });
  });
  await page.click('#back');
  await page.waitForFunction(() => window.vorka.desk.asked.size > 0);
  await kill('desk');
  await says(page, 'status', /Something went wrong: out of memory\./);
  await page.click('#back');
  await page.waitForFunction(() => !window.vorka.game.atEnd);
  it.complaints.length = 0;
});

test('A mind that changes in an analysis begins it anew', async () => {
  await beginGame(page, 'both');
  await page.click('#analyse');
  await isSearching();
  const asked = await page.evaluate(() => window.vorka.searcher.asked);
  await set(page, 'personality', 'Druvane');
  await page.waitForFunction((before) => window.vorka.searcher.asked > before && window.vorka.searcher.search, asked);
  await set(page, 'personality', 'Default');
  await page.click('#analyse');
  await page.waitForFunction(() => !window.vorka.searcher.search);
});

test('A review that is asked for while a move is made leaves Vorka its turn', async () => {
  await beginGame(page);
  await set(page, 'think', '10000');
  await page.evaluate(() => {
    const { game, searcher } = window.vorka;
    const stop = searcher.stop.bind(searcher);
    searcher.stop = async () => {  // as slow as where another engine has to take its place
      await new Promise((done) => { setTimeout(done, 50); });
      await stop();
    };
    game.addEventListener('change', () => document.getElementById('review').click(), { once: true });
  });
  await typeMove(page, 'e4');
  await page.waitForFunction(() => window.vorka.isThinking);
  await page.waitForTimeout(200);
  assert.deepEqual(await page.evaluate(() => [window.vorka.isThinking, window.vorka.isReviewing]), [true, false]);
  await set(page, 'think', '100');
  await page.click('#move-now');
  await movesMade(page, 2);
  await page.evaluate(() => { delete window.vorka.searcher.stop; });
});

test('In a game that was loaded Vorka moves when it is told to', async () => {
  await beginGame(page);
  await loadGame(page, '1. e4 e5 2. Nf3 *');
  await says(page, 'status', /2\. Nf3\. Black to move\. Vorka waits for “Let Vorka move”/);
  await page.click('#to-start');
  await says(page, 'move-now', /^Let Vorka move$/);
  await page.click('#move-now');
  await movesMade(page, 4);
  assert.match(await moves(page), /^e2e4 e7e5 g1f3 \w{4}$/);
  await says(page, 'move-now', /^Move now$/);
});

test('In a position that was loaded Vorka moves at once', async () => {
  await loadPosition(page, '4k3/8/8/8/8/8/4P3/4K3 b - - 0 1');
  await page.waitForFunction(() => window.vorka.game.moves.length === 1 && window.vorka.board.side === 'white');
});

test('Moves are taken back from the last one, wherever one looks', async () => {
  await beginGame(page);
  await loadGame(page, '1. e4 e5 2. Nf3 Nc6 *');
  await movesMade(page, 4);
  await page.click('#back');
  await page.waitForFunction(() => window.vorka.game.shown === 3);
  await page.click('#take-back');
  await page.waitForFunction(() => window.vorka.game.moves.length < 4);
  assert.equal(await moves(page), 'e2e4 e7e5');
});

test('Resigning while looking back ends the game, and shows it', async () => {
  await page.click('#to-start');
  await page.waitForFunction(() => window.vorka.game.shown === 0);
  await page.click('#resign');
  await says(page, 'status', /1… e5\. 0-1: White resigns/);
  await page.click('#to-start');
  await page.waitForFunction(() => window.vorka.game.shown === 0);
  assert.ok(await isDisabled('resign'));
});

test('A game that is watched goes on after a move was taken back, and after an analysis', async () => {
  await beginGame(page, 'none');
  await page.waitForFunction(() => window.vorka.game.moves.length >= 2);
  await page.click('#take-back');
  const before = await count();
  await page.waitForFunction((made) => window.vorka.game.moves.length >= made + 2, before);
  await page.click('#analyse');
  await isSearching();
  const paused = await count();
  await says(page, 'move-now', /^Let Vorka move$/);
  await page.waitForTimeout(300);
  assert.equal(await count(), paused);
  await page.click('#analyse');
  await page.waitForFunction((made) => window.vorka.game.moves.length >= made + 2, paused);
  await beginGame(page);
});

test('A new game begins with an empty search', async () => {
  await typeMove(page, 'e4');
  await movesMade(page, 2);
  await page.waitForFunction(() => document.querySelectorAll('.search-row').length > 0);
  await page.click('#new-game');
  await says(page, 'search', /No search has run yet/);
  await page.waitForTimeout(50);
  assert.equal(await page.locator('.search-row').count(), 0);
});

test('The game is there again after another visit', async () => {
  await set(page, 'control', '3+2');
  await beginGame(page);
  await typeAndHurry(page, 'e4');
  await page.evaluate(() => { window.vorka.clocks.left.white = 65000; });
  const before = await page.evaluate(() => [window.vorka.game.moves.join(), window.vorka.game.scores[2]]);
  await page.reload();
  await ready(page);
  assert.deepEqual(await page.evaluate(() => [window.vorka.game.moves.join(), window.vorka.game.scores[2]]), before);
  assert.match(await page.textContent('#clock-bottom'), /^(1:0[0-5]|0:5\d)$/);
  await typeAndHurry(page, 'd4');
  await page.click('#resign');
  await says(page, 'status', /White resigns/);
  await page.reload();
  await ready(page);
  await says(page, 'status', /0-1: White resigns/);
  await set(page, 'control', '');
});

test('The game is kept when the page goes out of sight', async () => {
  await page.evaluate(() => {
    localStorage.removeItem('vorka.game');
    Object.defineProperty(document, 'hidden', { value: true, configurable: true });
    document.dispatchEvent(new Event('visibilitychange'));
    delete document.hidden;
  });
  assert.notEqual(await page.evaluate(() => localStorage.getItem('vorka.game')), null);
});

test('After another visit Vorka moves if it is its turn', async () => {
  await beginGame(page);
  await set(page, 'think', '5000');
  await typeMove(page, 'e4');
  await page.waitForFunction(() => window.vorka.isThinking);
  await set(page, 'think', '100');
  await page.reload();
  await ready(page);
  await movesMade(page, 2);
});

test('What was kept by another version is no hindrance', async () => {
  for (const kept of ['{"moves":["e2e5"],"fen":"","scores":[]}', '{"fen":7}', 'rubbish']) {
    await page.evaluate((text) => {
      window.vorka.keep = () => {};  // what the page keeps when it goes
      localStorage.setItem('vorka.game', text);
    }, kept);
    await page.reload();
    await ready(page);
    assert.equal(await moves(page), '');
    assert.equal(await page.evaluate(() => window.vorka.board.side), 'white');
  }
});
