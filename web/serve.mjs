// Serves a folder on the loopback address: serve.mjs FOLDER [PORT]. The port after a taken one is tried, and so on; with
// PORT 0 the system chooses. `serve` is for the tests.

import { createReadStream, statSync } from 'node:fs';
import { createServer } from 'node:http';
import { extname, join, normalize } from 'node:path';
import { pipeline } from 'node:stream';
import { fileURLToPath } from 'node:url';

const kinds = { '.html': 'text/html; charset=utf-8', '.js': 'text/javascript', '.mjs': 'text/javascript', '.css': 'text/css',
  '.svg': 'image/svg+xml', '.wasm': 'application/wasm', '.webmanifest': 'application/manifest+json' };
const isolation = { 'Cross-Origin-Opener-Policy': 'same-origin', 'Cross-Origin-Embedder-Policy': 'require-corp' };
const attempts = 20;
const lastPort = 65535;

/** The file that a request asks for; null if its path can't be read. */
function fileOf(folder, url) {
  try {
    const path = normalize(decodeURIComponent(/^[^?#]*/.exec(url)[0]));
    if (!/^\/(?!\/)/.test(url) || path.includes('\0')) return null;
    return join(folder, path.endsWith('/') ? `${path}index.html` : path);
  } catch {
    return null;  // no text of UTF-8
  }
}

/** False for what can't even be asked for too, as a name that is too long. */
function isFile(path) {
  try {
    return statSync(path).isFile();
  } catch {
    return false;
  }
}

/** Resolves to { address, close }. Without `isolated` it behaves as a host that sends no headers of its own. */
export async function serve(folder, port, { isolated = true } = {}) {
  const server = createServer((request, response) => {
    const file = fileOf(folder, request.url);
    if (!file) {
      response.writeHead(400).end();
      return;
    }
    if (!file.startsWith(join(folder, '/')) || !isFile(file)) {
      response.writeHead(404).end();
      return;
    }
    response.writeHead(200, { 'Content-Type': kinds[extname(file)] ?? 'text/plain; charset=utf-8', 'Cache-Control': 'no-cache',
      ...(isolated ? isolation : {}) });
    pipeline(createReadStream(file), response, () => {});  // an unreadable file, or a browser that has gone, ends the answer
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
      if (error.code !== 'EADDRINUSE' || number >= Math.min(port + attempts, lastPort)) throw error;
    }
  }
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  const [folder, port = '8000'] = process.argv.slice(2);
  try {
    const { address } = await serve(folder, Number(port));
    console.log(`Vorka is at ${address}  (Ctrl-C ends the server)`);
  } catch (error) {
    console.error(`The page can't be served on port ${port}: ${error.message}`);
    process.exitCode = 1;
  }
}
