# The samples of the README are files that are built and run, or the ends of such files: each
# stands in it word for word, and no other code does.
file(READ ${ROOT}/README.md readme)

function(expect_sample language file first_text)
  file(READ ${ROOT}/${file} text)
  string(FIND "${text}" "${first_text}" start)
  string(SUBSTRING "${text}" ${start} -1 sample)
  string(FIND "${readme}" "```${language}\n${sample}```\n" place)
  if(start EQUAL -1 OR place EQUAL -1)
    message(FATAL_ERROR "README.md doesn't hold ${file} as it is, from '${first_text}' on")
  endif()
endfunction()

expect_sample(cfg examples/taste.cfg "# Where")
expect_sample(cpp examples/quickstart.cpp "// Reads")
expect_sample(cpp examples/host.cpp "int main(")
expect_sample(cmake tests/package/CMakeLists.txt "find_package(")

string(REGEX MATCHALL "```(cfg|cpp|cmake)\n" samples "${readme}")
list(LENGTH samples count)
if(NOT count EQUAL 4)
  message(FATAL_ERROR "README.md holds ${count} samples, of which 4 are checked")
endif()
