// The tokens of the format, for all editors. generate.mjs makes each editor's file of them.
//
// At each place the first token that matches counts; where an engine takes the longest match instead
// (Tree-sitter, which knows no look-ahead and no NUL either), the result is the same. `kind` is the
// letter that tests/editors prints for each byte: a name, a text, a number, a link, a comment, a
// block comment, punctuation, the import keyword, or x for what the reader finds wrong.

const first = 'A-Za-z_А-ИК-Яа-ик-яЁё'; // the reader's letters, from CP1251
const later = `${first}0-9\\x00`;
const mantissa = String.raw`[+\-]?(?:[0-9]+\.?[0-9]*|\.[0-9]+)`;

export const kinds = {
  n: { group: 'Name', scope: 'variable.other.member', vim: 'Identifier', query: 'property' },
  s: { group: 'Text', scope: 'string.quoted.double', vim: 'String', query: 'string' },
  d: { group: 'Number', scope: 'constant.numeric', vim: 'Number', query: 'number' },
  l: { group: 'Link', scope: 'variable.other.constant.link', vim: 'Constant', query: 'constant' },
  c: { group: 'Comment', scope: 'comment.line.number-sign', vim: 'Comment', query: 'comment' },
  b: { group: 'BlockComment', scope: 'comment.block', vim: 'Comment', query: 'comment' },
  p: { group: 'Punctuation', scope: 'punctuation', vim: 'Delimiter', query: 'punctuation.delimiter' },
  k: { group: 'Import', scope: 'keyword.control.import', vim: 'Include', query: 'keyword' },
  x: { group: 'Wrong', scope: 'invalid.illegal', vim: 'Error', query: 'error' },
};

export const tokens = [
  // To the end of the file, if nothing closes it.
  { name: 'block_comment', kind: 'b', begin: String.raw`/\*`, end: String.raw`\*/` },
  { name: 'comment', kind: 'c', pattern: String.raw`#[^\r\n\x00]*` },
  { name: 'string', kind: 's', pattern: String.raw`"[^"\r\n\x00]*"` },
  { name: 'open_string', kind: 'x', pattern: String.raw`"[^"\r\n\x00]*` },
  {
    name: 'number',
    kind: 'd',
    pattern: String.raw`${mantissa}(?:[eEdD][+\-]?[0-9]+)?(?![0-9.+\-eEdD])`,
  },
  // As far as the reader goes, with the byte that it drops.
  {
    name: 'faulty_number',
    kind: 'x',
    pattern: String.raw`${mantissa}(?:[eEdD][+\-]?[0-9]*)?[.+\-eEdD]?` +
        String.raw`|(?:[+\-]\.?|\.)(?:[eEdD][0-9]*)?[.+\-eEdD]?`,
  },
  { name: 'link', kind: 'l', pattern: String.raw`@[${first}\x00][${later}.]*` },
  { name: 'faulty_link', kind: 'x', pattern: String.raw`@[^\r\n]?` },
  { name: 'import_keyword', kind: 'k', pattern: String.raw`\$[ \t\f]*import(?![${later}])` },
  { name: 'faulty_directive', kind: 'x', pattern: String.raw`\$(?:[ \t\f]*[${first}][${later}]*)?` },
  { name: 'name', kind: 'n', pattern: `[${first}][${later}]*` },
  { name: 'punctuation', kind: 'p', pattern: String.raw`[={}\[\],]` },
  { name: 'slash', kind: 'x', pattern: String.raw`/[^\r\n]?` },
  { name: 'illegal', kind: 'x', pattern: String.raw`[^ \t\f\r\n\x00]` },
];
