// What the files of tests on a page have in common.

import assert from 'node:assert/strict';
import { after, afterEach, before } from 'node:test';
import { openPage, set } from './browser.mjs';

/** Opens the page before the tests of the calling file, with these fields set, hands it to `take`, and closes it after them.
 *  The result is what openPage gives, from then on. The page must complain of nothing in any test. */
export function pageOfFile(take, fields = {}) {
  const it = {};
  before(async () => {
    Object.assign(it, await openPage(process.env.VORKA_PAGE, { options: { reducedMotion: 'reduce' } }));
    for (const [id, value] of Object.entries(fields)) await set(it.page, id, value);
    take(it.page);
  });
  after(() => it.close());
  afterEach(() => assert.deepEqual(it.complaints.splice(0), [], 'the page complains of nothing'));
  return it;
}
