// The speed of the page's engine beside that of the native one: speed.mjs PAGE BENCH. Both search the positions of the
// bench in turns, seven times each; told is the ratio of each turn, and their middle one. On a machine that has other
// work too the turns differ much.

import { execFileSync } from 'node:child_process';
import { openPage } from './tests/browser.mjs';

const depth = 5;
const turns = 7;
const [folder, bench] = process.argv.slice(2);
const it = await openPage(folder);
const ready = await it.page.evaluate(() => document.documentElement.dataset.ready);
console.log(`The page was ready after ${ready} ms.`);
const ratios = [];
for (let turn = 0; turn < turns; turn += 1) {
  const { nodes, speed } = await it.page.evaluate((plies) => window.vorka.desk.bench(plies), depth);
  const text = execFileSync(bench, ['--quiet', '--depth', String(depth)], { encoding: 'utf8' });
  const native = Number(/^Nodes\/s: +(\d+)/m.exec(text)[1]);
  if (Number(/^Bench: (\d+)/m.exec(text)[1]) !== nodes) throw new Error('the engines search other nodes');
  ratios.push(speed / native);
  console.log(`${nodes} nodes: ${speed} a second in the page, ${native} natively, ratio ${(speed / native).toFixed(2)}`);
}
console.log(`Ratio: ${ratios.sort()[turns >> 1].toFixed(2)}`);
await it.close();
