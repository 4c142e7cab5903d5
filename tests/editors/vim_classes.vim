" Writes the letter of each character of file N of $WORK, N.txt, to N.vim.
" vim -N -u NONE -i NONE -es -S this: the syntax comes from editors/vim.
set encoding=utf-8 fileencodings=utf-8 fileformats=unix synmaxcol=0 nowrap nofixendofline
execute 'set runtimepath^=' .. $EDITORS .. '/vim'
syntax on
let s:letters = {'': '.', 'Name': 'n', 'Text': 's', 'Number': 'd', 'Link': 'l', 'Comment': 'c',
  \ 'BlockComment': 'b', 'Punctuation': 'p', 'Import': 'k', 'Wrong': 'x'}
for s:file in range(str2nr($FILES))
  execute 'edit! ' .. $WORK .. '/' .. s:file .. '.txt'
  set syntax=confgrove
  let s:all = []
  for s:line in range(1, line('$'))
    let s:text = getline(s:line)
    let s:classes = ''
    let s:column = 0
    while s:column < strlen(s:text)
      let s:group = synIDattr(synID(s:line, s:column + 1, 1), 'name')
      let s:classes ..= s:letters[substitute(s:group, '^confgrove', '', '')]
      let s:column += strlen(matchstr(s:text[s:column : s:column + 5], '^\_.'))
    endwhile
    call add(s:all, s:classes)
  endfor
  call writefile(s:all, $WORK .. '/' .. s:file .. '.vim')
endfor
qall!
