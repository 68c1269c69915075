// A browser on the page, for the tests and the pictures: Debian's Chromium without a window. Whatever the page complains
// of is kept.

import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { chromium } from 'playwright-core';
import { serve } from '../serve.mjs';

export const chromiumPath = process.env.VORKA_CHROMIUM ?? '/usr/bin/chromium';
const args = ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-background-networking',
  '--disable-component-update', '--disable-sync', '--force-color-profile=srgb'];

/** Opens the page of a folder. Gives { page, context, server, complaints, close }. */
export async function openPage(folder, { isolated = true, width = 1180, height = 1000, dark = false, options = {}, wait = true } = {}) {
  const server = await serve(folder, 0, { isolated });
  const home = mkdtempSync(join(tmpdir(), 'vorka-page-'));
  const context = await chromium.launchPersistentContext(home, { executablePath: chromiumPath, headless: true, args,
    viewport: { width, height }, colorScheme: dark ? 'dark' : 'light', ...options });
  const page = context.pages()[0];
  const complaints = [];
  page.on('console', (message) => {
    if (['error', 'warning'].includes(message.type())) complaints.push(`${message.type()}: ${message.text()}`);
  });
  page.on('pageerror', (error) => complaints.push(`exception: ${error.message}`));
  page.on('requestfailed', (request) => complaints.push(`failed: ${request.url()} ${request.failure()?.errorText}`));
  await page.goto(server.address);
  if (wait) await ready(page);
  return { page, context, server, complaints,
    close: async () => {
      await context.close();
      server.close();
      rmSync(home, { recursive: true, force: true });
    } };
}

export const ready = (page) => page.waitForFunction(() => document.documentElement.dataset.ready, null, { timeout: 60000 });

/** Clicks a square, as somebody who looks at the board would. */
export async function clickSquare(page, square) {
  const { x, y } = await centreOf(page, square);
  await page.mouse.click(x, y);
}

/** The middle of a square on the screen, whichever way the board is turned. */
export async function centreOf(page, square) {
  await page.locator('#board').scrollIntoViewIfNeeded();
  const box = await page.locator('#board .cm-chessboard .board').boundingBox();
  const isTurned = await page.evaluate(() => window.vorka.board.orientation === 'b');
  const [file, rank] = ['abcdefgh'.indexOf(square[0]), Number(square[1]) - 1].map((index) => (isTurned ? 7 - index : index));
  return { x: box.x + (file + 0.5) * box.width / 8, y: box.y + (7.5 - rank) * box.height / 8 };
}

/** Sets a slider or a field, as its user's hand does. */
export const set = (page, id, value) => page.evaluate(([name, text]) => {
  const input = document.getElementById(name);
  input.value = text;
  input.dispatchEvent(new Event('input', { bubbles: true }));
  input.dispatchEvent(new Event('change', { bubbles: true }));
}, [id, String(value)]);

export const moves = (page) => page.evaluate(() => window.vorka.game.moves.join(' '));
/** Waits until so many moves are made and nobody thinks. */
export const movesMade = (page, count, timeout = 60000) => page.waitForFunction(
  (wanted) => window.vorka.game.moves.length >= wanted && !window.vorka.isThinking, count, { timeout });

/** Waits until an element says something. */
export const says = (page, id, pattern) => page.waitForFunction(
  ([name, source]) => new RegExp(source).test(document.getElementById(name).textContent), [id, pattern.source]);

/** A new game, with White unless said otherwise. */
export async function beginGame(page, playAs = 'white') {
  if (await page.inputValue('#play-as') !== playAs) {
    await set(page, 'play-as', playAs);
    await page.evaluate(() => window.vorka.changing);
  }
  if (playAs === 'black' || playAs === 'none') {
    await page.evaluate(() => window.vorka.newGame());
    return;
  }
  await page.click('#new-game');
  await page.waitForFunction(() => window.vorka.game.moves.length === 0 && window.vorka.board.side === 'white');
}

/** What was loaded is on the board, or the dialog says why not. */
const textIsRead = (page) => page.waitForFunction(
  () => !document.getElementById('text-dialog').open || document.getElementById('text-error').textContent !== '');

export async function loadPosition(page, fen) {
  await page.click('#open-text');
  await page.locator('#text-dialog').waitFor({ state: 'visible' });
  await page.fill('#fen', fen);
  await page.click('#load-fen');
  await textIsRead(page);
}

export async function loadGame(page, pgn) {
  await page.click('#open-text');
  await page.locator('#text-dialog').waitFor({ state: 'visible' });
  await page.fill('#pgn', pgn);
  await page.click('#load-pgn');
  await textIsRead(page);
}

/** What the page gives as the text of the game. */
export async function pgnOf(page) {
  await page.click('#open-text');
  await page.locator('#text-dialog').waitFor({ state: 'visible' });
  const pgn = await page.inputValue('#pgn');
  await page.keyboard.press('Escape');
  await page.locator('#text-dialog').waitFor({ state: 'hidden' });
  return pgn;
}

/** Clicks a move, and what a pawn becomes. */
export async function moveByHand(page, uci) {
  await clickSquare(page, uci.slice(0, 2));
  await clickSquare(page, uci.slice(2, 4));
  if (uci.length === 5) await page.click(`#promotion button[value="${uci}"]`);
}

export async function typeMove(page, text) {
  await page.fill('#move-text', text);
  await page.press('#move-text', 'Enter');
}

/** Types a move and lets the engine answer at once, whatever the clocks say. */
export async function typeAndHurry(page, text) {
  const made = await page.evaluate(() => window.vorka.game.moves.length) + 2;
  await typeMove(page, text);
  await page.waitForFunction((wanted) => {
    const { game, isThinking, search } = window.vorka;
    if (isThinking && search.score !== undefined) document.getElementById('move-now').click();
    return game.moves.length >= wanted && !isThinking;
  }, made);
}
