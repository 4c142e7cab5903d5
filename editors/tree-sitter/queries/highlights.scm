; Made by editors/generate.mjs from editors/tokens.mjs.
(block_comment) @comment
(comment) @comment
(string) @string
(number) @number
(link) @constant
(import_keyword) @keyword
(name) @property
(wrong) @error
["=" "{" "}" "[" "]" ","] @punctuation.delimiter
