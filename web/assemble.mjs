// Puts the page together: assemble.mjs ENGINE PAGE, where ENGINE is the folder of vorka.mjs and vorka.wasm. Says how large
// the page is, and refuses one of more than three megabytes.

import { createHash } from 'node:crypto';
import { cpSync, existsSync, mkdirSync, readdirSync, readFileSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { dirname, join, relative } from 'node:path';
import { fileURLToPath } from 'node:url';

const largest = 3_000_000;
const here = dirname(fileURLToPath(import.meta.url));
const board = join(here, 'node_modules/cm-chessboard');
// What the page uses of the board's library.
const boardFiles = ['LICENSE', 'assets/chessboard.css', 'assets/pieces/standard.svg', 'assets/extensions/markers/markers.css',
  'assets/extensions/markers/markers.svg', 'src/Chessboard.js', 'src/lib', 'src/model', 'src/view', 'src/extensions/markers/Markers.js'];

const [engine, page] = process.argv.slice(2);
if (!page) {
  console.error('usage: assemble.mjs ENGINE PAGE');
  process.exit(2);
}
if (!existsSync(board)) {
  console.error('The board is not there; npm ci in web/ fetches it.');
  process.exit(1);
}

function put(from, to) {
  mkdirSync(dirname(to), { recursive: true });
  cpSync(from, to, { recursive: true });
}

rmSync(page, { recursive: true, force: true });
put(join(here, 'page'), page);
for (const file of boardFiles) put(join(board, file), join(page, 'board', file));
for (const file of ['vorka.mjs', 'vorka.wasm']) put(join(engine, file), join(page, file));
put(join(here, '../LICENSE'), join(page, 'LICENSE'));

const files = readdirSync(page, { recursive: true, withFileTypes: true }).filter((entry) => entry.isFile())
  .map((entry) => relative(page, join(entry.parentPath ?? entry.path, entry.name))).sort();
const sum = createHash('sha256');
let bytes = 0;
for (const file of files) {
  sum.update(file).update(readFileSync(join(page, file)));
  bytes += statSync(join(page, file)).size;
}
const worker = join(page, 'service_worker.js');
const kept = ['./', ...files.filter((file) => file !== 'service_worker.js')];
writeFileSync(worker, readFileSync(worker, 'utf8').replace('@VERSION@', sum.digest('hex').slice(0, 16))
  .replace("['@FILES@']", JSON.stringify(kept)));
console.log(`The page: ${files.length} files, ${(bytes / 1e6).toFixed(2)} MB.`);
if (bytes > largest) {
  console.error('That is more than three megabytes.');
  process.exit(1);
}
