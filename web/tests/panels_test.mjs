// What stands beside the board: why, the search, the sliders and settings, and how it all fits the window.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { beginGame, loadGame, movesMade, ready, says, set, typeMove } from './browser.mjs';
import { pageOfFile } from './page_of_file.mjs';

let page;
const it = pageOfFile((opened) => { page = opened; });

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
  await page.keyboard.press('Tab');
  assert.ok(await page.locator('#board .marker-why, #board .marker-why-black').count() > 0, 'by keyboard too');
  await page.keyboard.press('Shift+Tab');
  await page.keyboard.press('Shift+Tab');
});

test('A term that is opened shows both sides as bars, on a scale of its own', async () => {
  await loadGame(page, '1. e4 e5 2. Nf3 Nc6 3. Bc4 Nf6 4. Ng5 d5 5. exd5 Nxd5 6. Nxf7 Kxf7 7. Qf3+ Ke6 *');
  await says(page, 'why', /cover/);
  const longest = await page.evaluate(() => [...document.querySelectorAll('#why details')].map((term) => ({ name: term.dataset.term,
    sides: term.querySelectorAll('.why-side').length,
    rules: term.querySelectorAll('.why-rule').length,
    longest: Math.max(...[...term.querySelectorAll(':scope > div .bar')].map((bar) => parseFloat(bar.style.getPropertyValue('--length')))) })));
  const [white, black, together] = await page.evaluate(() => ['.why-side.of-white', '.why-side.of-black', 'summary'].map((name) => Number(document
    .querySelector(`#why details[data-term="queens"] ${name} .why-value`).textContent.replace('−', '-'))));
  assert.ok(white !== 0 && Math.abs(white + black - together) < 0.015, `${white} and ${black} is ${together}`);
  for (const term of longest.filter(({ rules }) => rules > 0)) {
    assert.equal(term.sides, 2, `${term.name} has both sides`);
    assert.ok(term.longest === 0 || term.longest > 20, `${term.name}: ${term.longest}`);
  }
});

test('The bars have room at every width', async () => {
  for (const width of [360, 860, 1180, 1240, 1300, 1400]) {
    await page.setViewportSize({ width, height: 1000 });
    const room = await page.locator('#why .why-bars').first().evaluate((bars) => bars.getBoundingClientRect().width);
    assert.ok(room >= 160, `${room} on ${width}`);
  }
  await page.setViewportSize({ width: 1180, height: 1000 });
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

test('At the end of the game it tells the result, and no verdict beside it', async () => {
  await loadGame(page, '1. f3 e5 2. g4 Qh4# 0-1');
  await says(page, 'why', /^0-1: Black mates\. The game is over\./);
  assert.doesNotMatch(await page.textContent('.why-summary'), /stand|winning/);
  await page.click('#back');
  await says(page, 'why', /judged before any move is tried/);
});

test('Numbers have one minus sign', async () => {
  const text = await page.evaluate(async () => {
    const { scoreText, signed } = await import('./info_line.js');
    return [scoreText(-34), scoreText(-29999), scoreText(29999), signed(-3), signed(3)].join(' ');
  });
  assert.equal(text, '−0.34 −#1 #1 −3 3');
  await loadGame(page, '1. e4 e5 2. Nf3 Nc6 3. Bc4 Nf6 4. Ng5 d5 5. exd5 Nxd5 6. Nxf7 Kxf7 7. Qf3+ Ke6 *');
  await says(page, 'why', /cover −\d/);
  const titles = await page.locator('.why-rule').evaluateAll((rules) => rules.map(({ title }) => title).join());
  assert.match(titles, /−\d/);
  assert.doesNotMatch(titles + await page.textContent('#why'), /-\d/);
});

test('Squares that are lit are in sight', async () => {
  // A row that is in sight itself, and no part of the board behind anything else.
  const isSeen = () => page.evaluate(() => {
    const board = document.querySelector('#board .board').getBoundingClientRect();
    const seen = (x, y) => document.elementFromPoint(x, y)?.closest('#board') !== null;
    return board.top >= 0 && board.bottom <= innerHeight && seen(board.left + 9, board.top + 9) && seen(board.right - 9, board.bottom - 9);
  });
  for (const [width, height] of [[1400, 800], [1180, 700], [900, 640], [768, 1024], [360, 740]]) {
    await page.setViewportSize({ width, height });
    for (const row of [page.locator('#why summary').first(), page.locator('#why summary').last()]) {
      await row.evaluate((element) => element.scrollIntoView({ block: 'center' }));
      await page.evaluate(() => new Promise((done) => { requestAnimationFrame(() => requestAnimationFrame(done)); }));
      await row.hover({ timeout: 5000 });
      assert.ok(await isSeen(), `on ${width} x ${height}`);
    }
  }
  await page.locator('h1').scrollIntoViewIfNeeded();
  await page.setViewportSize({ width: 1180, height: 1000 });
});

test('What has the keyboard keeps it when it is drawn again', async () => {
  const held = () => page.evaluate(() => document.activeElement.dataset.key ?? document.activeElement.id);
  const shown = (count) => page.waitForFunction((wanted) => window.vorka.game.shown === wanted, count);
  await page.focus('#moves button[data-key="3"]');
  await page.keyboard.press('Enter');
  await shown(3);
  assert.equal(await held(), '3');
  const row = page.locator('#why details[data-term="pawn_squares"] summary');
  await row.focus();
  const text = await page.textContent('#why');
  await page.evaluate(() => window.vorka.look(() => 5));
  await page.waitForFunction((before) => document.getElementById('why').textContent !== before, text);
  assert.equal(await held(), 'pawn_squares');
  await page.focus('#take-back');
  await beginGame(page, 'both');
  await typeMove(page, 'e4');
  await movesMade(page, 1);
  await page.focus('#take-back');
  await page.keyboard.press('Enter');
  await page.waitForFunction(() => window.vorka.game.moves.length === 0);
  assert.equal(await held(), 'board');
});

test('The graph is gone along by keyboard, and says where it is', async () => {
  await loadGame(page, '1. e4 e5 2. Nf3 *');
  const shown = (count) => page.waitForFunction((wanted) => window.vorka.game.shown === wanted, count);
  await shown(3);
  await page.focus('#graph [role="slider"]');
  await page.keyboard.press('ArrowLeft');
  await shown(2);
  assert.match(await page.getAttribute('#graph [role="slider"]', 'aria-valuetext'), /^1… e5, /);
  await page.keyboard.press('Home');
  await shown(0);
  await page.keyboard.press('End');
  await shown(3);
  assert.equal(await page.evaluate(() => document.activeElement.getAttribute('role')), 'slider');
});

test('The board leaves the keys of the browser alone', async () => {
  await page.focus('#board');
  const isTaken = (keys) => page.evaluate((init) => {
    const event = new KeyboardEvent('keydown', { ...init, bubbles: true, cancelable: true });
    document.getElementById('board').dispatchEvent(event);
    return event.defaultPrevented;
  }, keys);
  assert.equal(await isTaken({ key: 'ArrowLeft', altKey: true }), false);
  assert.equal(await isTaken({ key: 'ArrowLeft' }), true);
});

test('The search tells its questions, and the bounds close in', async () => {
  await page.click('#new-game');
  await page.click('#analyse');
  await page.waitForFunction(() => document.querySelectorAll('.search-row').length >= 5
    && document.querySelector('.search-row .yes, .search-row .no'), null, { timeout: 30000 });
  assert.match(await page.textContent('.search-status'), /^Depth \d+ · .* nodes · /);
  await page.waitForFunction(() => /^Depth \d+: \d+ questions, score .* nodes, [\d.]+ s: \S*[a-h]\d /.test(document.querySelector('.search-row:nth-child(2)').title));
  await page.waitForFunction(() => /^Depth \d+: is .* worth/.test(document.querySelector('.search-question').textContent));
  await page.click('#analyse');
  await page.waitForFunction(() => !window.vorka.searcher.search);
});

test('Each mark of the search is explained', async () => {
  const marks = await page.locator('.search-legend svg > *').evaluateAll((shapes) => shapes.map((shape) => shape.getAttribute('class')));
  assert.deepEqual(marks, ['yes', 'no', 'found', 'band']);
  assert.match(await page.textContent('.search-legend'), /yes, .*no, .*score.*bounds/);
});

test('The marks of the search are turned as they are explained', async () => {
  await beginGame(page, 'both');
  await typeMove(page, 'e4');
  await movesMade(page, 1);
  await page.click('#analyse');
  await page.waitForFunction(() => document.querySelector('.search-rows .yes') && document.querySelector('.search-rows .no'));
  const steps = await page.evaluate(() => ['.search-legend .yes', '.search-rows .yes', '.search-legend .no', '.search-rows .no'].map((name) => {
    const [from, to] = document.querySelector(name).getAttribute('d').match(/[ML] \S+/g).map((text) => Number(text.slice(2)));
    return Math.sign(to - from);
  }));
  assert.deepEqual(steps, [-1, -1, 1, 1]);
  await page.click('#analyse');
  await page.waitForFunction(() => !window.vorka.searcher.search);
});

test('A bound is a score only if it is more than the score', async () => {
  const scores = await page.evaluate(() => {
    const { search } = window.vorka;
    search.reset({ fen: '', moves: ['e2e4'] }, 'black');
    return ['depth 5 score cp -53', 'depth 6 score cp -84 lowerbound', 'depth 6 score cp -40 lowerbound', 'depth 6 score cp -45'].map((text) => {
      search.tell(`info ${text} nodes 9 nps 9 time 9 pv e7e5`);
      return search.score;
    });
  });
  assert.deepEqual(scores, [53, 53, 40, 45]);
});

test('The sliders reach the engine', async () => {
  await set(page, 'play-as', 'white');
  await set(page, 'strength', '1400');
  await set(page, 'style', '12');
  await set(page, 'personality', 'Druvane');
  const options = await page.evaluate(() => Object.fromEntries(window.vorka.searcher.options));
  assert.deepEqual([options.UCI_Elo, options.Style, options.Personality], ['1400', 12, 'Druvane']);
  await says(page, 'name-top', /Vorka \(Druvane, about 1400\)/);
  await set(page, 'style', '0');
  await set(page, 'personality', 'Default');
});

test('With clocks it is not asked how long Vorka thinks', async () => {
  await set(page, 'control', '3+2');
  assert.ok(await page.locator('#think').isDisabled());
  assert.equal(await page.textContent('#think-text'), 'by the clock');
  assert.deepEqual(await page.locator('.clock').evaluateAll((clocks) => clocks.map(({ ariaLabel }) => ariaLabel)), ['Black\'s clock', 'White\'s clock']);
  await set(page, 'control', '');
  assert.ok(await page.locator('#think').isEnabled());
  assert.match(await page.textContent('#think-text'), /^at most \d+\.\d s$/);
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

test('An emptied setting, and one out of its bounds, is refused with a word', async () => {
  await page.fill('#settings-panel input[type="search"]', '');
  for (const [name, bounds] of [['limited_razoring_margin', /razoring margin takes a whole number from .* It stays \d+\./], ['Hash', /^Hash takes/]]) {
    const field = page.locator(`#settings .setting[data-name="${name}"] input`);
    const before = await field.inputValue();
    for (const text of ['', '99999999']) {
      await field.fill(text);
      await field.press('Tab');
      await says(page, 'settings-error', bounds);
      assert.equal(await field.inputValue(), before);
    }
  }
  assert.equal(await page.locator('.setting.changed').count(), 0);
  const field = page.locator('#settings .setting[data-name="limited_razoring_margin"] input');
  await field.fill('500');
  await field.press('Tab');
  await says(page, 'settings-error', /^$/);
  await page.click('#settings-panel .settings-tools button');
});

test('The defaults leave the filter as it is', async () => {
  const shown = () => page.locator('#settings .setting').evaluateAll((fields) => fields.filter(({ hidden }) => !hidden).length);
  await page.fill('#settings-panel input[type="search"]', 'razoring');
  const before = await shown();
  assert.ok(before > 0 && before < 30);
  await page.click('#settings-panel .settings-tools button');
  assert.equal(await shown(), before);
  await page.fill('#settings-panel input[type="search"]', '');
});

test('The coordinates stand out from their squares', async () => {
  for (const colorScheme of ['light', 'dark']) {
    await page.emulateMedia({ colorScheme });
    const contrasts = await page.evaluate(() => {
      const light = (element) => {
        const parts = getComputedStyle(element).fill.match(/\d+/g).slice(0, 3).map((part) => part / 255)
          .map((part) => (part <= 0.03928 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4));
        return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2];
      };
      return ['white', 'black'].map((colour) => {
        const both = [`.square.${colour}`, `.coordinate.${colour}`].map((name) => light(document.querySelector(`#board ${name}`)));
        return (Math.max(...both) + 0.05) / (Math.min(...both) + 0.05);
      });
    });
    assert.ok(Math.min(...contrasts) >= 4.5, `${contrasts} in the ${colorScheme} theme`);
  }
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
      const sliders = await page.locator('.slider input').evaluateAll((inputs) => inputs.map((input) => input.getBoundingClientRect().width));
      assert.ok(Math.min(...sliders) >= 120, `a slider of ${Math.min(...sliders)} on ${width}`);
    }
  }
});

test('Nothing sticks out of its panel', async () => {
  await page.emulateMedia({ colorScheme: 'light' });
  for (const width of [340, 390, 768, 860, 880, 900, 1180, 1240, 1300]) {
    await page.setViewportSize({ width, height: 900 });
    const outside = await page.evaluate(() => [...document.querySelectorAll('.panel')].flatMap((panel) => {
      const { right } = panel.getBoundingClientRect();
      const words = document.createTreeWalker(panel, NodeFilter.SHOW_TEXT);
      const found = [];
      const test = (box, what) => { if (box.width && box.right > right + 0.5) found.push(`${what} by ${box.right - right}`); };
      while (words.nextNode()) {
        const range = document.createRange();
        range.selectNode(words.currentNode);
        for (const box of range.getClientRects()) test(box, words.currentNode.textContent);
      }
      for (const input of panel.querySelectorAll('input, button, output')) test(input.getBoundingClientRect(), input.outerHTML);
      for (const output of panel.querySelectorAll('output')) {
        if (output.scrollWidth > output.clientWidth + 1) found.push(`${output.textContent} is cut off`);
      }
      for (const name of panel.querySelectorAll('.setting:not([hidden]) span')) {
        if (name.getBoundingClientRect().width < 100) found.push(`${name.textContent} has no room`);
      }
      const sides = [...panel.querySelectorAll('.why-sides span')].map((side) => side.getBoundingClientRect());
      if (sides.length && sides[1].left - sides[0].right < 4) found.push('the sides of the bars run together');
      return found;
    }));
    assert.deepEqual(outside, [], `on ${width}`);
  }
  await page.setViewportSize({ width: 1180, height: 1000 });
});

test('Nothing comes from elsewhere', async () => {
  const others = [];
  page.on('request', (request) => request.url().startsWith(it.server.address) || others.push(request.url()));
  await page.reload();
  await ready(page);
  assert.deepEqual(others, []);
});
