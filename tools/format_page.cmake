# SPDX-License-Identifier: MIT
# Turns the description of the format, the Markdown file SOURCE, into the manual page PAGE by the
# program LOWDOWN.
file(READ ${SOURCE} text)

# A page has its own title and no table of contents, and its links lead nowhere.
string(REGEX REPLACE "^# [^\n]*\n" "" text "${text}")
string(REGEX REPLACE "\n- \\[[^]]*\\]\\(#[^)]*\\)" "" text "${text}")
string(REPLACE "[tool.md](tool.md)" "**confgrove**(1)" text "${text}")
string(REGEX REPLACE "\\[([^]]*)\\]\\([^)]*\\)" "\\1" text "${text}")
file(WRITE ${PAGE}.md "# NAME\n\nconfgrove - the configuration format of confgrove\n\n# DESCRIPTION\n${text}
# SEE ALSO\n\n**confgrove**(1)\n")

execute_process(
  COMMAND ${LOWDOWN} -s -Tman -m title=confgrove -m section=5 -m "source=confgrove ${VERSION}"
    -m date= ${PAGE}.md
  OUTPUT_VARIABLE page COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE ${PAGE}.md)
string(REGEX REPLACE "\n(\\.S[HS])\n" "\n\\1 " page "${page}") # as apropos wants it
# The tables are for the preprocessor tbl, which the first line asks for.
file(WRITE ${PAGE} "'\\\" t\n${page}")
