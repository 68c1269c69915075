// Where the page may stand: without a network, on a host that sends no headers of its own, and in a browser that lets
// the engine share no memory.

import assert from 'node:assert/strict';
import { cpSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { movesMade, openPage, ready, set } from './browser.mjs';

const folder = process.env.VORKA_PAGE;

async function playMove(page, move) {
  await page.fill('#move-text', move);
  await page.press('#move-text', 'Enter');
}

test('It works without a network', async () => {
  const it = await openPage(folder);
  try {
    await it.page.waitForFunction(() => navigator.serviceWorker.controller);
    it.server.close();
    await it.page.reload();
    await ready(it.page);
    await playMove(it.page, 'e4');
    await movesMade(it.page, 2);
    assert.deepEqual(it.complaints, []);
  } finally {
    await it.close();
  }
});

test('A new version waits until the page is closed, and leaves the caches of others alone', async () => {
  const copy = mkdtempSync(join(tmpdir(), 'vorka-versions-'));
  cpSync(folder, copy, { recursive: true });
  const it = await openPage(copy, { wait: false });
  const { page } = it;
  const caches = () => page.evaluate(() => self.caches.keys());
  try {
    await page.evaluate(() => self.caches.open('somebody else'));
    await ready(page);
    await page.waitForFunction(() => navigator.serviceWorker.controller);
    const before = await caches();
    assert.equal(before.length, 2);
    const worker = join(copy, 'service_worker.js');
    writeFileSync(worker, readFileSync(worker, 'utf8').replace(/(?<=[`'])(\$\{ours\})?[0-9a-f]{16}(?=[`'])/, (name) => `${name.slice(0, -1)}X`));
    const state = await page.evaluate(async () => {
      const registration = await navigator.serviceWorker.getRegistration();
      await registration.update();
      const next = registration.installing;
      await new Promise((done) => { next.onstatechange = () => next.state !== 'installing' && done(); });
      await new Promise((done) => { setTimeout(done, 300); });
      return next.state;
    });
    assert.equal(state, 'installed');
    assert.deepEqual((await caches()).filter((name) => before.includes(name)), before);
    assert.deepEqual(it.complaints, []);
  } finally {
    await it.close();
    rmSync(copy, { recursive: true });
  }
});

test('A host without headers is no hindrance', async () => {
  const it = await openPage(folder, { isolated: false, wait: false });
  try {
    await it.page.waitForFunction(() => self.crossOriginIsolated && document.documentElement.dataset.ready, null, { timeout: 30000 });
    await playMove(it.page, 'e4');
    await movesMade(it.page, 2);
    assert.deepEqual(it.complaints, []);
  } finally {
    await it.close();
  }
});

test('Without shared memory an engine that must stop is replaced', async () => {
  const it = await openPage(folder, { isolated: false, options: { serviceWorkers: 'block' } });
  const { page } = it;
  try {
    assert.equal(await page.evaluate(() => self.crossOriginIsolated), false);
    await set(page, 'think', '10000');
    await playMove(page, 'e4');
    await page.waitForFunction(() => window.vorka.searcher.search);
    await page.click('#move-now');  // before there is a move to give
    await movesMade(page, 2, 5000);
    await set(page, 'strength', '1200');
    await page.click('#analyse');
    await page.waitForFunction(() => document.querySelectorAll('.search-row').length >= 5);
    // While the next engine comes, more is asked for: the last wish counts.
    await page.evaluate(() => {
      for (const id of ['back', 'forward', 'to-start', 'to-end']) document.getElementById(id).click();
    });
    await page.waitForFunction(() => window.vorka.game.atEnd && document.querySelectorAll('.search-row').length >= 5);
    await page.click('#analyse');
    await page.waitForFunction(() => !window.vorka.searcher.search);
    await playMove(page, 'a3');
    await movesMade(page, 4);
  } finally {
    await it.close();
  }
});
