# SPDX-License-Identifier: MIT
# What the tool takes is headers alone, so another system can have it from CONFGROVE_HEADER_DIR: just
# these, since the others there are this system's.
set(headers ${CMAKE_CURRENT_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${headers})
foreach(name CLI boost dtl nlohmann toml++)
  file(CREATE_LINK ${CONFGROVE_HEADER_DIR}/${name} ${headers}/${name} SYMBOLIC)
endforeach()
foreach(name CLI11 nlohmann_json)
  add_library(${name}::${name} INTERFACE IMPORTED)
  target_include_directories(${name}::${name} INTERFACE ${headers})
  set(${name}_FOUND ON)
endforeach()
set(DTL_INCLUDE_DIR ${headers})
foreach(name JSON PROPERTY_TREE TOML)
  set(CONVERT_INCLUDE_${name} ${headers})
endforeach()
