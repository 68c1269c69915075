// What stands beside the board: why, the search, the sliders and settings, and how it all fits the window.

import assert from 'node:assert/strict';
import { after, afterEach, before, test } from 'node:test';
import { moves, movesMade, openPage, ready, set } from './browser.mjs';

let it;
let page;
before(async () => {
  it = await openPage(process.env.VORKA_PAGE, { options: { reducedMotion: 'reduce' } });
  page = it.page;
});
after(() => it.close());
afterEach(() => assert.deepEqual(it.complaints.splice(0), [], 'the page complains of nothing'));

test('The evaluation is told term by term, and its rules light their squares', async () => {
  await set(page, 'play-as', 'both');
  await page.fill('#move-text', 'e4');
  await page.press('#move-text', 'Enter');
  await movesMade(page, 1);
  const term = page.locator('#why details[data-term="pawn_squares"]');
  await term.locator('summary').click();
  await term.locator('.why-rule').filter({ hasText: 'pawn on square' }).first().hover();
  assert.ok(await page.locator('#board .marker-why, #board .marker-why-black').count() > 0);
  await page.locator('h1').hover();
  assert.equal(await page.locator('#board .marker-why, #board .marker-why-black').count(), 0);
  assert.match(await term.locator('summary').getAttribute('aria-label'), /positional .* reckless/);
});

test('What the terms come to is the evaluation', async () => {
  const { blended, sum, blendWeight } = await page.evaluate(
    () => window.vorka.desk.ask('evaluation', 'Default', ...window.vorka.game.lines));
  const weight = Math.min(Math.max(blendWeight, 0), 16);
  assert.equal(blended, Math.trunc(((16 - weight) * sum[0] + weight * sum[1]) / 16));
});

test('An ending is told by its steps', async () => {
  await set(page, 'play-as', 'both');
  await page.click('#open-text');
  await page.fill('#fen', '8/7k/4P3/4K3/8/8/2r5/5R2 b - - 0 1');
  await page.click('#load-fen');
  await page.locator('.why-steps li').first().waitFor();
  assert.match(await page.textContent('.why-summary'), /rook ending/);
});

test('The search tells its questions, and the bounds close in', async () => {
  await page.click('#new-game');
  await page.click('#analyse');
  await page.waitForFunction(() => document.querySelectorAll('.search-row').length >= 5
    && document.querySelector('.search-row .yes, .search-row .no'), null, { timeout: 30000 });
  assert.match(await page.textContent('.search-status'), /^Depth \d+ · .* nodes · /);
  await page.waitForFunction(() => /^Depth \d+: is .* worth/.test(document.querySelector('.search-question').textContent));
  await page.click('#analyse');
  await page.waitForFunction(() => !window.vorka.searcher.search);
});

test('The sliders reach the engine', async () => {
  await set(page, 'play-as', 'white');
  await set(page, 'strength', '1400');
  await set(page, 'style', '12');
  await set(page, 'personality', 'Druvane');
  const options = await page.evaluate(() => Object.fromEntries(window.vorka.searcher.options));
  assert.deepEqual([options.UCI_Elo, options.Style, options.Personality], ['1400', 12, 'Druvane']);
  assert.match(await page.textContent('#name-top'), /Vorka \(Druvane, about 1400\)/);
  await set(page, 'style', '0');
  await set(page, 'personality', 'Default');
});

test('Another personality sees another score', async () => {
  const scores = await page.evaluate(() => Promise.all(['Rux', 'Sedrimo'].map(async (name) =>
    (await window.vorka.desk.ask('evaluation', name, '', 'e2e4 e7e5 g1f3')).blended)));
  assert.notEqual(scores[0], scores[1]);
});

test('The settings are those of the engine, and a changed one counts', async () => {
  await page.click('#settings-panel summary');
  const { settings } = await page.evaluate(() => window.vorka.desk.ask('settings'));
  const tournament = await page.evaluate(() => window.vorka.searcher.offers.filter((line) => /name [a-z_]+ type spin/.test(line)).length);
  const names = await page.locator('#settings .setting').evaluateAll((fields) => fields.map(({ dataset }) => dataset.name));
  assert.ok(settings.every(({ name }) => names.includes(name)));
  assert.ok(tournament > 50 && names.length >= settings.length + tournament);
  await page.fill('#settings-panel input[type="search"]', 'limited razoring margin');
  await page.fill('#settings .setting[data-name="limited_razoring_margin"] input', '500');
  await page.press('#settings .setting[data-name="limited_razoring_margin"] input', 'Tab');
  assert.match(await page.evaluate(() => window.vorka.searcher.files.get('/settings.txt')), /^limited_razoring_margin=500$/m);
  // The engine has read the file without a complaint.
  const said = await page.evaluate(async () => {
    const lines = [];
    window.vorka.searcher.hear = (line) => lines.push(line);
    await window.vorka.searcher.request('isready', 'readyok');
    return lines;
  });
  assert.deepEqual(said, ['readyok']);
  await page.click('#settings-panel .settings-tools button');
  assert.equal(await page.locator('.setting.changed').count(), 0);
});

test('Every control has a name', async () => {
  const nameless = await page.locator('button, input, select, textarea').evaluateAll((controls) => controls
    .filter((control) => !control.ariaLabel && !control.textContent.trim() && !control.labels?.length)
    .map((control) => control.outerHTML));
  assert.deepEqual(nameless, []);
});

test('It fits a phone, a tablet and a desk, light and dark', async () => {
  for (const [width, height] of [[360, 740], [768, 1024], [1400, 900]]) {
    await page.setViewportSize({ width, height });
    for (const colorScheme of ['light', 'dark']) {
      await page.emulateMedia({ colorScheme });
      const [content, board] = await page.evaluate(() => [document.scrollingElement.scrollWidth,
        document.getElementById('board').getBoundingClientRect().width]);
      assert.ok(content <= width, `${content} wide on ${width}`);
      assert.ok(board > Math.min(width * 0.4, 330), `the board is ${board} wide on ${width}`);
    }
  }
});

test('Nothing comes from elsewhere', async () => {
  const others = [];
  page.on('request', (request) => request.url().startsWith(it.server.address) || others.push(request.url()));
  await page.reload();
  await ready(page);
  assert.deepEqual(others, []);
  assert.equal(await moves(page), '');
});
