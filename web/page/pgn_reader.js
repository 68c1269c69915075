/** A game without what the engine's reader refuses: variations, glyphs such as $2, marks such as !?, lines that begin with %. */
export function plainPgn(text) {
  let plain = '';
  let depth = 0;
  for (const [part] of text.replace(/\r/g, '').replace(/^%.*$/gm, '').matchAll(/\{[^}]*\}|;[^\n]*|\[[^\]]*\]|[()]|\$\d+|[^{;[()$]+|./g)) {
    if (part === '(') depth += 1;
    else if (part === ')') depth = Math.max(depth - 1, 0);
    else if (depth === 0 && part.startsWith('[')) plain += part;
    else if (depth === 0 && !/^[{;$]/.test(part)) plain += part.replace(/[!?]+/g, '');
  }
  return plain.trim();
}
