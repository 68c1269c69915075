// The server of scripts/web: whatever is asked of it, it goes on.

import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import { connect } from 'node:net';
import { after, before, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { serve } from '../serve.mjs';

let server;
before(async () => { server = await serve(process.env.VORKA_PAGE, 0); });
after(() => server.close());

/** The status of an answer to a path that a well-behaved client would not send. */
const statusOf = (path) => new Promise((resolve, reject) => {
  const socket = connect(Number(new URL(server.address).port), '127.0.0.1');
  let answer = '';
  socket.on('data', (data) => { answer += data; });
  socket.on('end', () => resolve(Number(answer.split(' ')[1])));
  socket.on('error', reject);
  socket.write(`GET ${path} HTTP/1.1\r\nHost: here\r\nConnection: close\r\n\r\n`);
});

for (const [path, status] of [['/', 200], ['/main.js?x=1', 200], ['/%6dain.js', 200], ['/nothing', 404], ['/page', 404],
  ['/../serve.mjs', 404], [`/${'x'.repeat(300)}`, 404], ['/%2e%2e/serve.mjs', 404], ['/%E0', 400], ['//', 400],
  ['//main.js', 400], ['/%00', 400], ['/%', 400], ['*', 400], ['http://here/', 400]]) {
  test(`${path} is answered by ${status}`, { timeout: 5000 }, async () => {
    assert.equal(await statusOf(path), status);
    assert.equal(await statusOf('/'), 200);
  });
}

test('A port that there is not is refused', () => {
  for (const port of ['65536', '99999', '-1', 'http']) {
    const { status, stderr } = spawnSync(fileURLToPath(new URL('../../scripts/web', import.meta.url)), ['--port', port],
      { encoding: 'utf8', timeout: 5000 });
    assert.equal(status, 2);
    assert.match(stderr, /--port takes a number up to 65535/);
  }
});
