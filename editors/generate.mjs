// Makes the grammars of all editors from tokens.mjs. With --check, changes nothing and fails if one
// of them isn't what it would make.
import { mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { kinds, tokens } from './tokens.mjs';

const here = dirname(fileURLToPath(import.meta.url));
const note = 'Made by editors/generate.mjs from editors/tokens.mjs.';

// --- TextMate, as VS Code and others take it ---------------------------------------------------

function textMate() {
  const rule = ({ kind, pattern, begin, end }) => {
    const name = `${kinds[kind].scope}.confgrove`;
    return pattern ? { name, match: pattern } : { name, begin, end };
  };
  const grammar = {
    comment: note,
    name: 'confgrove',
    scopeName: 'source.confgrove',
    patterns: tokens.map(rule),
  };
  return `${JSON.stringify(grammar, null, 2)}\n`;
}

// --- Vim ---------------------------------------------------------------------------------------

// A class in brackets. Vim's lines hold no line feed, and few bytes need a backslash there.
function vimClass(text) {
  return text.replaceAll('\\n', '').replaceAll('\\f', '\\x0c').replaceAll('\\[', '[');
}

// Of the syntax that tokens.mjs uses, in Vim's "very magic" one.
function vimPattern(pattern) {
  const piece = /\(\?!(\[[^\]]*\])\)|(\[(?:\\.|[^\]\\])*\])|\(\?:|\\.|[@="]|[^]/g;
  return pattern.replace(piece, (text, ahead, set) => {
    if (ahead) return `${vimClass(ahead)}@!`;
    if (set) return vimClass(set);
    if (text === '(?:') return '%(';
    if (text === '@' || text === '=') return `\\${text}`;
    return text;
  });
}

function vim() {
  const group = (kind) => `confgrove${kinds[kind].group}`;
  // The last one that matches counts.
  const rules = [...tokens].reverse().map(({ kind, pattern, begin, end }) => pattern
    ? `syntax match ${group(kind)} '\\v${vimPattern(pattern)}'`
    : `syntax region ${group(kind)} start='\\v${vimPattern(begin)}' end='\\v${vimPattern(end)}'`);
  const links = Object.keys(kinds).map(
    (kind) => `highlight default link ${group(kind)} ${kinds[kind].vim}`);
  return `" Syntax of confgrove's configuration files. ${note}
if exists('b:current_syntax')
  finish
endif
scriptencoding utf-8
syntax case match
syntax sync fromstart

${rules.join('\n')}

${links.join('\n')}

let b:current_syntax = 'confgrove'
`;
}

// --- Tree-sitter -------------------------------------------------------------------------------

// It takes the longest token, and of equal ones the first.
function treeSitterPattern({ pattern, name }) {
  if (name === 'block_comment') return String.raw`\/\*([^*]|\*+[^*\/])*(\*+\/|\**)`;
  return pattern.replace(/\(\?!\[[^\]]*\]\)/g, '').replaceAll('\\x00', '')
    .replace(/\\?\//g, '\\/');
}

function treeSitter() {
  const named = tokens.filter(({ name }) => name !== 'punctuation');
  const rules = named.map((token) => `    ${token.name}: _ => /${treeSitterPattern(token)}/,`);
  const wrong = named.filter(({ kind }) => kind === 'x').map(({ name }) => `$.${name}`);
  return `// ${note}
module.exports = grammar({
  name: 'confgrove',
  extras: $ => [/[ \\t\\f\\r\\n]/, $.comment, $.block_comment, $.wrong],
  rules: {
    source_file: $ => repeat(choice($.section, $.import)),
    section: $ => seq(
      field('name', $.name),
      choice(seq('=', field('value', $._value), optional($.block)), $.block)),
    block: $ => seq('{', repeat(choice($.section, $.import)), '}'),
    import: $ => seq($.import_keyword, field('file', $.string)),
    _value: $ => choice($.string, $.number, $.link, $.array),
    array: $ => seq('[', repeat(choice($.number, ',')), ']'),

${rules.join('\n')}
    wrong: $ => choice(${wrong.join(', ')}),
  },
});
`;
}

function treeSitterQuery() {
  const named = tokens.filter(({ name, kind }) => name !== 'punctuation' && kind !== 'x');
  const lines = named.map(({ name, kind }) => `(${name}) @${kinds[kind].query}`);
  return `; ${note}
${lines.join('\n')}
(wrong) @${kinds.x.query}
["=" "{" "}" "[" "]" ","] @${kinds.p.query}
`;
}

const files = {
  'vscode/syntaxes/confgrove.tmLanguage.json': textMate(),
  'vim/syntax/confgrove.vim': vim(),
  'tree-sitter/grammar.js': treeSitter(),
  'tree-sitter/queries/highlights.scm': treeSitterQuery(),
};
let stale = false;
for (const [name, text] of Object.entries(files)) {
  const path = join(here, name);
  if (process.argv[2] !== '--check') {
    mkdirSync(dirname(path), { recursive: true });
    writeFileSync(path, text);
  } else if (readFileSync(path, 'utf8') !== text) {
    console.error(`editors/${name} isn't what editors/generate.mjs makes`);
    stale = true;
  }
}
process.exitCode = stale ? 1 : 0;
