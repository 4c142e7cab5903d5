# SPDX-License-Identifier: MIT
# Builds for Windows with MinGW-w64 on Linux, for 64 bits or, with CONFGROVE_MINGW=i686, for 32.
# Programs run under Wine where it is there.
set(CONFGROVE_MINGW x86_64 CACHE STRING "The processor: x86_64 or i686")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CONFGROVE_MINGW)
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${CONFGROVE_MINGW})
set(target ${CONFGROVE_MINGW}-w64-mingw32)
set(CMAKE_C_COMPILER ${target}-gcc-posix)
set(CMAKE_CXX_COMPILER ${target}-g++-posix)
set(CMAKE_FIND_ROOT_PATH /usr/${target})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Under Wine programs find the libraries that they share with the compiler and with us.
set(libraries "")
if(BUILD_SHARED_LIBS)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libstdc++-6.dll
    OUTPUT_VARIABLE runtime OUTPUT_STRIP_TRAILING_WHITESPACE)
  get_filename_component(runtime "${runtime}" DIRECTORY)
  set(libraries "${CMAKE_BINARY_DIR};${CMAKE_BINARY_DIR}/bin;${runtime};/usr/${target}/lib")
else()
  set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
endif()
# Root goes by the rights of files there, as anybody does.
set(bound setpriv --bounding-set=-dac_override,-dac_read_search)
execute_process(COMMAND ${bound} true RESULT_VARIABLE failed OUTPUT_QUIET ERROR_QUIET)
if(failed)
  set(bound "")
endif()
list(JOIN bound " " bound)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_BINARY_DIR}/under-wine)
file(WRITE ${CMAKE_CROSSCOMPILING_EMULATOR} "#!/bin/sh
# Runs a program for Windows, whose letters are UTF-8 here. A limit on the size of files is a full disk.
wine=/usr/lib/wine/wine64 # without a word on 32 bits
[ -x $wine ] || wine=wine
export LC_ALL=\${CONFGROVE_LOCALE:-C.UTF-8} WINEPATH='${libraries}' WINEDEBUG=\"\${WINEDEBUG:--all}\"
unset TMPDIR # Wine has a server, and a start of its services, for each that there is
trap '' XFSZ
exec ${bound} $wine \"$@\"
")
file(CHMOD ${CMAKE_CROSSCOMPILING_EMULATOR} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
