// Games and positions as text: what is read, what is written, and what is said of what can't be.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { beginGame, loadGame, loadPosition, moves, movesMade, pgnOf, says, set, typeMove } from './browser.mjs';
import { pageOfFile } from './page_of_file.mjs';

let page;
pageOfFile((opened) => { page = opened; }, { think: 100, 'play-as': 'both' });

const scotch = 'e2e4 e7e5 g1f3 b8c6 d2d4';
const readable = [
  ['a game without a result', '1. e4 e5 2. Nf3 Nc6 3. d4', scotch],
  ['a game without numbers', 'e4 e5 Nf3 Nc6 d4 *', scotch],
  ['numbers without blanks', '1.e4 e5 2.Nf3 Nc6 3.d4 *', scotch],
  ['comments', '1. e4 {[%clk 0:03:00] (a bracket} 1... e5 ; to the end (of the line\n2. Nf3 {one\ntwo} 2... Nc6 3. d4 *', scotch],
  ['glyphs and marks', '1. e4 $1 e5!? 2. Nf3! $14 Nc6?? 3. d4 += *', scotch],
  ['variations in variations', '1. e4 e5 (1... c5 2. Nf3 (2. c3 {x)} d5) 2... d6) 2. Nf3 Nc6 3. d4 1-0', scotch],
  ['the first of several games', '[White "A"]\n\n1. e4 e5 2. Nf3 Nc6 3. d4\n\n[White "B"]\n\n1. c4 *', scotch],
  ['lines for programs, and those of Windows', '% nothing\r\n1. e4 e5\r\n2. Nf3 Nc6 3. d4 *\r\n', scotch],
  ['a checking move without its mark', '1. e4 f6 2. Qh5 g6 *', 'e2e4 f7f6 d1h5 g7g6'],
  ['coordinates', '1. e2-e4 e7e5 2. Ng1-f3 Nb8-c6 3. d2d4 *', scotch],
  ['en passant said in words', '1. e4 a6 2. e5 d5 3. exd6 e.p. cxd6 *', 'e2e4 a7a6 e4e5 d7d5 e5d6 c7d6'],
  ['en passant said in the move', '1. e4 a6 2. e5 d5 3. exd6e.p. *', 'e2e4 a7a6 e4e5 d7d5 e5d6'],
  ['castling by zeros', '1. e4 e5 2. Nf3 Nf6 3. Bc4 Bc5 4. 0-0 O-O *', 'e2e4 e7e5 g1f3 g8f6 f1c4 f8c5 e1g1 e8g8'],
  ['a promotion without its sign', '[FEN "7k/P7/8/8/8/8/8/K7 w - - 0 1"]\n\n1. a8N *', 'a7a8n'],
  ['a start without its counters, and Black to move', '[FEN "4k3/8/8/8/8/8/4P3/4K3 b"]\n\n1... Kd7 2. e4', 'e8d7 e2e4'],
];
for (const [what, text, wanted] of readable) {
  test(`It reads ${what}`, async () => {
    await loadGame(page, text);
    await page.locator('#text-dialog').waitFor({ state: 'hidden', timeout: 5000 });
    assert.equal(await moves(page), wanted);
  });
}

test('What can\'t be read is refused with a word', async () => {
  for (const [text, word] of [['', /no game/], ['hello world', /no game/], ['1. e4 Ke5 *', /can't be played/],
    ['[FEN "rubbish"]\n\n1. e4 *', /no position/]]) {
    await loadGame(page, text);
    await says(page, 'text-error', word);
    await page.click('#close-text');
  }
});

test('A game that was read keeps its tags', async () => {
  await loadGame(page, '[Event "Cup"]\n[Site "Elsewhere"]\n[Date "1999.01.02"]\n[Round "3"]\n[White "A \\"x\\""]\n[Black "B"]\n[Result "1-0"]\n'
    + '[ECO "C44"]\n[WhiteElo "2000"]\n\n1. e4 e5 2. Nf3 1-0');
  await says(page, 'status', /1-0: as the text says/);
  const pgn = await pgnOf(page);
  for (const tag of ['[Event "Cup"]', '[Site "Elsewhere"]', '[Date "1999.01.02"]', '[Round "3"]', '[White "A \\"x\\""]', '[Black "B"]',
    '[Result "1-0"]', '[ECO "C44"]', '[WhiteElo "2000"]']) assert.ok(pgn.includes(`${tag}\n`), `${tag} in ${pgn}`);
  assert.match(pgn, /\n\n1\. e4 e5 2\. Nf3 1-0\n$/);
});

const threefold = '1. Nf3 Nf6 2. Ng1 Ng8 3. Nf3 Nf6 4. Ng1 Ng8';

test('A game that went on after a repetition goes on', async () => {
  await loadGame(page, `${threefold} 5. e4 e5 1-0`);
  await says(page, 'status', /5… e5\. 1-0: as the text says/);
  assert.match(await pgnOf(page), /\[Result "1-0"\][^]* 1-0\n$/);
  await page.click('#back');
  await says(page, 'status', /Black to move/);
  await page.click('#analyse');
  await page.waitForFunction(() => window.vorka.game.scores[9] !== undefined && window.vorka.search.exact);
  await page.click('#analyse');
  await page.waitForFunction(() => !window.vorka.searcher.search);
  await page.click('#review');
  await says(page, 'review', /^Review the game$/);
  await page.waitForFunction(() => window.vorka.game.scores[10] !== undefined && !window.vorka.isReviewing);
  const scores = await page.evaluate(() => window.vorka.game.scores);
  assert.equal(scores.length, 11);
  assert.notEqual(scores[9], 0);
  assert.notEqual(scores[10], 0);
});

test('The text of a game outranks a draw by rule, and mate outranks the text', async () => {
  for (const [text, status] of [[`${threefold} 1-0`, /1-0: as the text says/], [`${threefold} *`, /1\/2-1\/2: Threefold repetition/],
    ['1. f3 e5 2. g4 Qh4# 1-0', /0-1: Black mates/]]) {
    await loadGame(page, text);
    await says(page, 'status', status);
  }
});

test('The rule of fifty moves is spelt as elsewhere', async () => {
  await loadGame(page, '[FEN "4k3/8/8/8/8/8/4P3/R3K3 w - - 99 90"]\n\n90. Ra2 *');
  await says(page, 'status', /1\/2-1\/2: Fifty-move rule\./);
});

test('The names follow the sides', async () => {
  await beginGame(page);
  await typeMove(page, 'e4');
  await movesMade(page, 2);
  assert.match(await pgnOf(page), /\[White "You"\]\n\[Black "Vorka"\]/);
  await set(page, 'play-as', 'black');
  await movesMade(page, 3);
  assert.match(await pgnOf(page), /\[White "Vorka"\]\n\[Black "You"\]/);
  await set(page, 'play-as', 'both');
  await page.evaluate(() => window.vorka.changing);
});

test('The text of a game from a position has the true numbers', async () => {
  await loadPosition(page, '4k3/8/8/8/8/8/4P3/4K3 b - - 0 30');
  await page.waitForFunction(() => window.vorka.board.side === 'black');
  await typeMove(page, 'Kd7');
  await movesMade(page, 1);
  const pgn = await pgnOf(page);
  assert.match(pgn, /\[SetUp "1"\]\n\[FEN "4k3\/8\/8\/8\/8\/8\/4P3\/4K3 b - - 0 30"\]\n\n30\.\.\. Kd7 \*\n$/);
  await loadGame(page, pgn);
  await page.locator('#text-dialog').waitFor({ state: 'hidden' });
  assert.equal(await pgnOf(page), pgn);
  assert.match(await page.textContent('#moves'), /30…Kd7/);
});

test('Enter in the field of the position loads it', async () => {
  await page.click('#open-text');
  await page.locator('#text-dialog').waitFor({ state: 'visible' });
  await page.fill('#fen', 'rubbish');
  await page.press('#fen', 'Enter');
  await says(page, 'text-error', /no such position/);
  await page.fill('#fen', '4k3/8/8/8/8/8/4P3/4K3 w - - 0 1');
  await page.press('#fen', 'Enter');
  await page.locator('#text-dialog').waitFor({ state: 'hidden' });
  assert.equal(await page.evaluate(() => window.vorka.game.fen), '4k3/8/8/8/8/8/4P3/4K3 w - - 0 1');
});

test('A move that can\'t be played is answered, and the answer stays', async () => {
  await beginGame(page, 'both');
  await typeMove(page, 'Ke2');
  await says(page, 'move-error', /^There is no move “Ke2” here\.$/);
  assert.equal(await page.getAttribute('#move-error', 'role'), 'alert');
  assert.equal(await page.getAttribute('#move-text', 'aria-invalid'), 'true');
  await page.waitForTimeout(300);
  await says(page, 'move-error', /Ke2/);
  await page.fill('#move-text', 'e');
  await says(page, 'move-error', /^$/);
  await loadPosition(page, '4k3/8/8/8/8/8/8/1N2KN2 w - - 0 1');
  await page.waitForFunction(() => window.vorka.board.board.getPiece('b1') === 'wn');
  await typeMove(page, 'Nd2');
  await says(page, 'move-error', /b1d2 or f1d2|f1d2 or b1d2/);
  assert.equal(await moves(page), '');
  await loadPosition(page, '4k3/8/8/8/2p5/1P6/8/4K3 w - - 0 1');
  await page.waitForFunction(() => window.vorka.board.board.getPiece('b3') === 'wp');
  await typeMove(page, 'Bc4');
  await says(page, 'move-error', /^There is no move “Bc4” here\.$/);
  await typeMove(page, 'BXC4');
  await says(page, 'move-error', /^There is no move “BXC4” here\.$/);
  await typeMove(page, 'bc4');
  await movesMade(page, 1);
});
