// Made by editors/generate.mjs from editors/tokens.mjs.
module.exports = grammar({
  name: 'confgrove',
  extras: $ => [/[ \t\f\r\n]/, $.comment, $.block_comment, $.wrong],
  rules: {
    source_file: $ => repeat(choice($.section, $.import)),
    section: $ => seq(
      field('name', $.name),
      choice(seq('=', field('value', $._value), optional($.block)), $.block)),
    block: $ => seq('{', repeat(choice($.section, $.import)), '}'),
    import: $ => seq($.import_keyword, field('file', $.string)),
    _value: $ => choice($.string, $.number, $.link, $.array),
    array: $ => seq('[', repeat(choice($.number, ',')), ']'),

    block_comment: _ => /\/\*([^*]|\*+[^*\/])*(\*+\/|\**)/,
    comment: _ => /#[^\r\n]*/,
    string: _ => /"[^"\r\n]*"/,
    open_string: _ => /"[^"\r\n]*/,
    number: _ => /[+\-]?(?:[0-9]+\.?[0-9]*|\.[0-9]+)(?:[eEdD][+\-]?[0-9]+)?/,
    faulty_number: _ => /[+\-]?(?:[0-9]+\.?[0-9]*|\.[0-9]+)(?:[eEdD][+\-]?[0-9]*)?[.+\-eEdD]?|(?:[+\-]\.?|\.)(?:[eEdD][0-9]*)?[.+\-eEdD]?/,
    link: _ => /@[A-Za-z_А-ИК-Яа-ик-яЁё][A-Za-z_А-ИК-Яа-ик-яЁё0-9.]*/,
    faulty_link: _ => /@[^\r\n]?/,
    import_keyword: _ => /\$[ \t\f]*import/,
    faulty_directive: _ => /\$(?:[ \t\f]*[A-Za-z_А-ИК-Яа-ик-яЁё][A-Za-z_А-ИК-Яа-ик-яЁё0-9]*)?/,
    name: _ => /[A-Za-z_А-ИК-Яа-ик-яЁё][A-Za-z_А-ИК-Яа-ик-яЁё0-9]*/,
    slash: _ => /\/[^\r\n]?/,
    illegal: _ => /[^ \t\f\r\n]/,
    wrong: $ => choice($.open_string, $.faulty_number, $.faulty_link, $.faulty_directive, $.slash, $.illegal),
  },
});
