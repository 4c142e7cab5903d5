# shellcheck shell=bash disable=SC2034  # read by those who source it
# What differs between the systems, as the tests of the tool see it. CMake says which it is.
case ${CONFGROVE_SYSTEM:-} in
  Windows)
    separator='\\'                    # of a path that an import wrote with a backslash
    line_end='\r\n'                   # of what is written anew
    too_large='General failure'       # said where a file can't grow; the limit is this system's
    seeds=6                           # of generated layers: a program takes long to start under Wine
    forms=''                          # of problems that are compared; they don't depend on the system
    unlike=(                          # checks that can't hold: their notes, and why
      "*'x.'*" "the system drops a point at the end of a name"
      "*'last.cfg '*" "the system drops a blank at the end of a name"
      "backslash*" "it divides directories"
      "diff: output" "each line gets another end"
      "through a link: bytes*" "Wine shows links as what they lead to"
      "the link stays" "Wine shows links as what they lead to"
      "the mode stays" "files have no modes"
      "device*" "the device isn't one there"
      "flatten: nothing that isn't read back*" "Wine has files of its own where none can be made"
      "*libconfig*" "the library isn't there"
    )
    ;;
  *)
    separator=/
    line_end='\n'
    too_large='File too large'
    seeds=60
    forms='json rendered sarif'
    unlike=()
    ;;
esac

# Whether the check of this note holds on this system.
holds_here() {
  local i
  for ((i = 0; i < ${#unlike[@]}; i += 2)); do
    # shellcheck disable=SC2053  # a pattern
    [[ $1 != ${unlike[i]} ]] || return 1
  done
}
