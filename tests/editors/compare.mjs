// compare.mjs BYTE_CLASSES MODULES WORK FILE...: each byte of each file has the same class for the
// reader and for the grammar of each editor. Files are taken for CP1251, where a byte is a character.
import { execFileSync } from 'node:child_process';
import { readFileSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { kinds } from '../../editors/tokens.mjs';

const [byteClasses, modules, work, ...names] = process.argv.slice(2);
const here = dirname(fileURLToPath(import.meta.url));
const editors = join(here, '../../editors');
const require = createRequire(join(modules, 'x'));

// Pieces of the format in any order, from a fixed seed: no file in use has such neighbours.
function soup(extra) {
  const pieces = ['a', 'ж', 'Й', '_b1', 'import', '$', '$import', '$ import', '"', '"t"', '#', '# c ',
    '/*', '*/', '/', '//', '*', '1', '12', '.5', '5.', '-', '+', '.', 'e', 'd3', '1e3', '1E+', '@',
    '@a', '@a.b', '=', '{', '}', '[', ']', ',', ' ', '\t', '\f', '\n', '\n', '\n', '\r', ';', '\\', ...extra];
  let seed = 1;
  let text = '';
  for (let i = 0; i < 20000; ++i) {
    seed = (Math.imul(seed, 1103515245) + 12345) >>> 0;
    let piece = pieces[(seed >>> 8) % pieces.length];
    if (piece === '/*' && seed >>> 29 !== 0) piece += ' c */'; // few are long
    text += piece;
  }
  return text;
}

// --- TextMate ----------------------------------------------------------------------------------

const { Registry, parseRawGrammar, INITIAL } = require('vscode-textmate');
const oniguruma = require('vscode-oniguruma');
await oniguruma.loadWASM(readFileSync(join(modules, 'vscode-oniguruma/release/onig.wasm')));
const registry = new Registry({
  onigLib: Promise.resolve({
    createOnigScanner: (patterns) => new oniguruma.OnigScanner(patterns),
    createOnigString: (text) => new oniguruma.OnigString(text),
  }),
  loadGrammar: async () => {
    const path = join(editors, 'vscode/syntaxes/confgrove.tmLanguage.json');
    return parseRawGrammar(readFileSync(path, 'utf8'), path);
  },
});
const grammar = await registry.loadGrammar('source.confgrove');
const letterOfScope = Object.fromEntries(
  Object.entries(kinds).map(([letter, { scope }]) => [`${scope}.confgrove`, letter]));

function textMateClasses(text) {
  let state = INITIAL;
  let classes = '';
  for (const [line, end] of linesOf(text, /\r\n|\r|\n/)) {
    const { tokens, ruleStack } = grammar.tokenizeLine(line, state);
    state = ruleStack;
    let marked = '';
    for (const { startIndex, endIndex, scopes } of tokens) {
      const letter = scopes.length > 1 ? letterOfScope[scopes.at(-1)] : '.';
      marked += letter.repeat(Math.min(endIndex, line.length) - startIndex);
    }
    classes += marked + '.'.repeat(end.length);
  }
  return classes;
}

// Each line with its end.
function linesOf(text, end) {
  const parts = text.split(new RegExp(`(${end.source})`));
  return parts.flatMap((part, i) => (i % 2 ? [] : [[part, parts[i + 1] ?? '']]));
}

// --- Tree-sitter -------------------------------------------------------------------------------

// Its tokens, by its rules: the longest, and of equal ones the first. What its parser makes of them
// isn't looked at.
function treeSitterTokens() {
  const rules = {};
  const any = new Proxy({}, { get: (_, name) => name });
  const pass = (...parts) => parts;
  const source = readFileSync(join(editors, 'tree-sitter/grammar.js'), 'utf8');
  const define = new Function('module', 'grammar', 'repeat', 'choice', 'seq', 'field', 'optional', source);
  define({}, (given) => {
    for (const [name, rule] of Object.entries(given.rules)) rules[name] = rule(any);
    given.extras(any);
  }, pass, pass, pass, pass, pass);
  const wrong = rules.wrong;
  const letters = { comment: 'c', block_comment: 'b', string: 's', number: 'd', link: 'l', name: 'n',
    import_keyword: 'k' };
  const tokens = [['p', /[={}[\],]/y]];
  for (const [name, rule] of Object.entries(rules)) {
    if (!(rule instanceof RegExp)) continue;
    tokens.push([wrong.includes(name) ? 'x' : letters[name], new RegExp(rule.source, 'y')]);
  }
  return tokens;
}

const treeSitter = treeSitterTokens();
function treeSitterClasses(text) {
  let classes = '';
  while (classes.length < text.length) {
    const at = classes.length;
    let best = ['.', 1];
    if (!/[ \t\f\r\n]/.test(text[at])) {
      best = ['?', 0];
      for (const [letter, pattern] of treeSitter) {
        pattern.lastIndex = at;
        const length = pattern.exec(text)?.[0].length ?? 0;
        if (length > best[1]) best = [letter, length];
      }
      if (best[1] === 0) throw new Error(`no token at ${at}`);
    }
    classes += best[0].repeat(best[1]);
  }
  return classes;
}

// --- All of them -------------------------------------------------------------------------------

// Line ends have no class, whatever goes over them.
const blanked = (text, classes) => [...classes].map((c, i) => ('\r\n'.includes(text[i]) ? '.' : c)).join('');

const decoder = new TextDecoder('windows-1251');
const bytesOf = new Map(Array.from({ length: 256 }, (_, i) => [decoder.decode(Uint8Array.of(i)), i]));
const soups = { soup: [], 'soup with NUL': ['\0'] };
for (const [name, extra] of Object.entries(soups)) {
  writeFileSync(join(work, name), Uint8Array.from(soup(extra), (c) => bytesOf.get(c)));
}
const files = [...names, ...Object.keys(soups).map((name) => join(work, name))];
const texts = files.map((file) => decoder.decode(readFileSync(file)));
texts.forEach((text, i) => writeFileSync(join(work, `${i}.txt`), text));
execFileSync('vim', ['-N', '-u', 'NONE', '-i', 'NONE', '-n', '-es', '-S', join(here, 'vim_classes.vim')],
  { env: { ...process.env, WORK: work, EDITORS: editors, FILES: `${files.length}` }, stdio: 'inherit' });

let bytes = 0;
let differences = 0;
files.forEach((file, i) => {
  const text = texts[i];
  const wanted = blanked(text, execFileSync(byteClasses, [file], { encoding: 'latin1' }));
  const vimLines = readFileSync(join(work, `${i}.vim`), 'utf8');
  const found = {
    TextMate: textMateClasses(text),
    Vim: vimLines.replaceAll('\n', '.').slice(0, text.length),
    'Tree-sitter': text.includes('\0') ? wanted : treeSitterClasses(text),
  };
  bytes += text.length;
  for (const [editor, classes] of Object.entries(found)) {
    const given = blanked(text, classes);
    if (given === wanted) continue;
    differences += 1;
    const at = [...wanted].findIndex((c, j) => c !== given[j]);
    const part = (s) => JSON.stringify(s.slice(Math.max(0, at - 20), at + 20));
    console.error(`${editor}, ${file}, byte ${at}:\n  text   ${part(text)}\n  reader ${part(wanted)}\n  editor ${part(given)}`);
  }
});
if (differences > 0) process.exit(1);
console.log(`${files.length} files, ${bytes} bytes: TextMate, Vim and the tokens of Tree-sitter agree with the reader`);
