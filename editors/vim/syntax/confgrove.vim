" Syntax of confgrove's configuration files. Made by editors/generate.mjs from editors/tokens.mjs.
if exists('b:current_syntax')
  finish
endif
scriptencoding utf-8
syntax case match
syntax sync fromstart

syntax match confgroveWrong '\v[^ \t\x0c\r\x00]'
syntax match confgroveWrong '\v/[^\r]?'
syntax match confgrovePunctuation '\v[={}[\],]'
syntax match confgroveName '\v[A-Za-z_А-ИК-Яа-ик-яЁё][A-Za-z_А-ИК-Яа-ик-яЁё0-9\x00]*'
syntax match confgroveWrong '\v\$%([ \t\x0c]*[A-Za-z_А-ИК-Яа-ик-яЁё][A-Za-z_А-ИК-Яа-ик-яЁё0-9\x00]*)?'
syntax match confgroveImport '\v\$[ \t\x0c]*import[A-Za-z_А-ИК-Яа-ик-яЁё0-9\x00]@!'
syntax match confgroveWrong '\v\@[^\r]?'
syntax match confgroveLink '\v\@[A-Za-z_А-ИК-Яа-ик-яЁё\x00][A-Za-z_А-ИК-Яа-ик-яЁё0-9\x00.]*'
syntax match confgroveWrong '\v[+\-]?%([0-9]+\.?[0-9]*|\.[0-9]+)%([eEdD][+\-]?[0-9]*)?[.+\-eEdD]?|%([+\-]\.?|\.)%([eEdD][0-9]*)?[.+\-eEdD]?'
syntax match confgroveNumber '\v[+\-]?%([0-9]+\.?[0-9]*|\.[0-9]+)%([eEdD][+\-]?[0-9]+)?[0-9.+\-eEdD]@!'
syntax match confgroveWrong '\v"[^"\r\x00]*'
syntax match confgroveText '\v"[^"\r\x00]*"'
syntax match confgroveComment '\v#[^\r\x00]*'
syntax region confgroveBlockComment start='\v/\*' end='\v\*/'

highlight default link confgroveName Identifier
highlight default link confgroveText String
highlight default link confgroveNumber Number
highlight default link confgroveLink Constant
highlight default link confgroveComment Comment
highlight default link confgroveBlockComment Comment
highlight default link confgrovePunctuation Delimiter
highlight default link confgroveImport Include
highlight default link confgroveWrong Error

let b:current_syntax = 'confgrove'
