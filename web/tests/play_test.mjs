// Games on the page, as somebody plays them who sees the board.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { beginGame, centreOf, clickSquare, loadPosition, moveByHand, moves, movesMade, says, set } from './browser.mjs';
import { pageOfFile } from './page_of_file.mjs';

const bench = readFileSync(new URL('../../tests/data/bench_total.txt', import.meta.url), 'utf8');
const nodesAtDepth = (depth) => Number(new RegExp(`^${depth} (\\d+)$`, 'm').exec(bench)[1]);

let page;
pageOfFile((opened) => { page = opened; });

const newGame = () => beginGame(page);
const loadFen = (fen) => loadPosition(page, fen);
const makeMove = (uci) => moveByHand(page, uci);

test('The engine searches the same nodes as the native one', async () => {
  const { nodes } = await page.evaluate(() => window.vorka.desk.bench(4));
  assert.equal(nodes, nodesAtDepth(4));
});

test('The weakest opponent is mated', { timeout: 240000 }, async () => {
  await newGame();
  await set(page, 'strength', '1000');
  await page.evaluate(async () => {
    const { Searcher } = await import('./engine.js');
    window.helper = await new Searcher().start();
  });
  const isOver = () => page.evaluate(() => window.vorka.game.isOver);
  for (let made = 0; !(await isOver()) && made < 300; made += 2) {
    const move = await page.evaluate(() => window.helper.think(window.vorka.game.position, 'nodes 12000'));
    await makeMove(move);
    await page.waitForFunction((before) => window.vorka.game.isOver
      || (window.vorka.game.moves.length >= before + 2 && !window.vorka.isThinking && window.vorka.board.side === 'white'), made);
  }
  await says(page, 'status', /1-0: White mates\./);
  await set(page, 'strength', '2250');
  assert.equal(await page.textContent('#strength-text'), 'full');
});

test('A piece is dragged, and where it may go is shown', async () => {
  await newGame();
  const [from, to] = [await centreOf(page, 'g1'), await centreOf(page, 'f3')];
  await page.mouse.move(from.x, from.y);
  await page.mouse.down();
  await page.mouse.move((from.x + to.x) / 2, (from.y + to.y) / 2);
  assert.equal(await page.locator('#board .marker-dot').count(), 2);
  await page.mouse.move(to.x, to.y);
  await page.mouse.up();
  await movesMade(page, 2);
  assert.match(await moves(page), /^g1f3 \w{4}$/);
});

test('A move and its answer are taken back', async () => {
  await newGame();
  await makeMove('e2e4');
  await movesMade(page, 2);
  await page.click('#take-back');
  await page.waitForFunction(() => window.vorka.game.moves.length === 0);
  assert.equal(await page.evaluate(() => window.vorka.board.board.getPiece('e2')), 'wp');
});

test('A move can be typed, and a wrong one is refused', async () => {
  await newGame();
  await page.fill('#move-text', 'Ke2');
  await page.press('#move-text', 'Enter');
  assert.equal(await moves(page), '');
  await page.fill('#move-text', 'd4');
  await page.press('#move-text', 'Enter');
  await movesMade(page, 2);
  assert.match(await moves(page), /^d2d4 /);
});

test('The board is played by keyboard alone, and speaks', async () => {
  await newGame();
  await page.focus('#move-text');
  await page.keyboard.press('Shift+Tab');
  await page.focus('#board');
  assert.match(await page.textContent('#speech'), /^[a-h][1-8], (empty|white|black)/);
  await page.evaluate(() => { window.vorka.board.cursor = 'e2'; });
  await page.keyboard.press('Enter');
  assert.match(await page.textContent('#speech'), /^e2, white pawn picked up, it can go to e4, e3|e3, e4/);
  await page.keyboard.press('ArrowUp');
  await page.keyboard.press('ArrowUp');
  assert.equal(await page.textContent('#speech'), 'e4, empty');
  await page.keyboard.press('Enter');
  await movesMade(page, 2);
  assert.match(await moves(page), /^e2e4 /);
});

test('A pawn becomes what the player chooses', async () => {
  await newGame();
  await loadFen('7k/P7/8/8/8/8/8/K7 w - - 0 1');
  await page.waitForFunction(() => window.vorka.board.side === 'white');
  await makeMove('a7a8n');
  await page.waitForFunction(() => window.vorka.game.moves.length >= 1);
  assert.equal(await page.evaluate(() => window.vorka.board.board.getPiece('a8')), 'wn');
});

for (const [what, cancel] of [['Escape', () => page.keyboard.press('Escape')], ['A press beside the choice', () => page.mouse.click(5, 5)]]) {
  test(`${what} takes a promotion back`, async () => {
    await newGame();
    await loadFen('7k/P7/8/8/8/8/8/K7 w - - 0 1');
    await page.waitForFunction(() => window.vorka.board.side === 'white');
    await clickSquare(page, 'a7');
    await clickSquare(page, 'a8');
    await page.locator('#promotion').waitFor({ state: 'visible' });
    await cancel();
    await page.waitForFunction(() => window.vorka.board.board.getPiece('a7') === 'wp', null, { timeout: 5000 });
    assert.equal(await moves(page), '');
  });
}

test('A position and a game are loaded and read out', async () => {
  await newGame();
  await loadFen('rubbish');
  await says(page, 'text-error', /no such position/);
  await set(page, 'play-as', 'both');
  await page.fill('#pgn', '[White "Ann"]\n[Black "Bob"]\n\n1. e4 $1 {best} e5 (1... c5 2. Nf3) 2. Qh5?! Ke7 3. Qxe5# 1-0\n');
  await page.click('#load-pgn');
  await page.waitForFunction(() => window.vorka.game.moves.length === 5);
  await says(page, 'status', /3\. Qxe5#\. 1-0: White mates/);
  await page.click('#open-text');
  await page.locator('#text-dialog').waitFor({ state: 'visible' });
  const pgn = await page.inputValue('#pgn');
  assert.match(pgn, /\[White "Ann"\][^]*\[Result "1-0"\][^]*1\. e4 e5 2\. Qh5 Ke7 3\. Qxe5#\s+1-0/);
  assert.match(await page.inputValue('#fen'), /^rnbq1bnr\/ppppkppp\/8\/4Q3\/4P3\/8\/PPPP1PPP\/RNB1KBNR b KQ - 0 3$/);
  await page.click('#close-text');
});

test('A review finds the move with which the game turned', async () => {
  await page.click('#review');
  await page.waitForFunction(() => document.getElementById('graph').textContent.includes('turned with'), null, { timeout: 60000 });
  await page.waitForFunction(() => document.getElementById('review').textContent === 'Review the game', null, { timeout: 60000 });
  await says(page, 'graph', /The game turned with 2… Ke7/);
});

test('The clocks run, and resigning ends the game', async () => {
  await set(page, 'control', '1+0');
  await newGame();
  await makeMove('e2e4');
  await movesMade(page, 2);
  assert.match(await page.textContent('#clock-bottom'), /^(1:00|0:5\d)$/);
  assert.ok(await page.locator('#clock-bottom.running').isVisible());
  await page.click('#resign');
  await page.waitForFunction(() => window.vorka.game.isOver);
  await says(page, 'status', /0-1: White resigns/);
  await set(page, 'control', '');
});
