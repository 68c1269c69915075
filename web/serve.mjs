// Serves a folder on the loopback address: serve.mjs FOLDER [PORT]. The port after a taken one is tried, and so on; with
// PORT 0 the system chooses. `serve` is for the tests.

import { createReadStream, statSync } from 'node:fs';
import { createServer } from 'node:http';
import { extname, join, normalize } from 'node:path';
import { fileURLToPath } from 'node:url';

const kinds = { '.html': 'text/html; charset=utf-8', '.js': 'text/javascript', '.mjs': 'text/javascript', '.css': 'text/css',
  '.svg': 'image/svg+xml', '.wasm': 'application/wasm', '.webmanifest': 'application/manifest+json' };
const isolation = { 'Cross-Origin-Opener-Policy': 'same-origin', 'Cross-Origin-Embedder-Policy': 'require-corp' };
const attempts = 20;

/** Resolves to { address, close }. Without `isolated` it behaves as a host that sends no headers of its own. */
export async function serve(folder, port, { isolated = true } = {}) {
  const server = createServer((request, response) => {
    const path = normalize(decodeURIComponent(new URL(request.url, 'http://localhost').pathname));
    const file = join(folder, path.endsWith('/') ? `${path}index.html` : path);
    if (!file.startsWith(join(folder, '/')) || !statSync(file, { throwIfNoEntry: false })?.isFile()) {
      response.writeHead(404).end();
      return;
    }
    response.writeHead(200, { 'Content-Type': kinds[extname(file)] ?? 'text/plain; charset=utf-8', 'Cache-Control': 'no-cache',
      ...(isolated ? isolation : {}) });
    createReadStream(file).pipe(response);
  });
  const taken = await listen(server, port);
  return { address: `http://127.0.0.1:${taken}/`, close: () => { server.close(); server.closeAllConnections(); } };
}

async function listen(server, port) {
  for (let number = port; ; number += 1) {
    try {
      await new Promise((resolve, reject) => {
        server.once('error', reject);
        server.listen(number, '127.0.0.1', () => { server.off('error', reject); resolve(); });
      });
      return server.address().port;
    } catch (error) {
      if (error.code !== 'EADDRINUSE' || number >= port + attempts) throw error;
    }
  }
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  const [folder, port = '8000'] = process.argv.slice(2);
  const { address } = await serve(folder, Number(port));
  console.log(`Vorka is at ${address}  (Ctrl-C ends the server)`);
}
