# Installs the build into a temporary prefix, builds examples/embedding
# against the installed package and runs it with --check. Also makes sure
# the listings in docs/embedding.md are still the example's files.
#
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=... [-DGENERATOR=...] [-DCXX_COMPILER=...]
#         [-DBUILD_TYPE=...] [-DCXX_FLAGS=...] -P package_test.cmake
#
# Any failing step fails the test; the temporary folder goes away either way.
cmake_minimum_required(VERSION 3.25)

foreach(required BUILD_DIR SOURCE_DIR)
  if(NOT ${required})
    message(FATAL_ERROR "package_test: ${required} is not set")
  endif()
endforeach()

if(DEFINED ENV{TMPDIR} AND IS_DIRECTORY "$ENV{TMPDIR}")
  set(temp_root "$ENV{TMPDIR}")
else()
  set(temp_root "/tmp")
endif()
string(RANDOM LENGTH 10 ALPHABET "abcdefghijklmnopqrstuvwxyz0123456789" suffix)
set(work "${temp_root}/vbi-package-${suffix}")
set(prefix "${work}/prefix")
set(example_build "${work}/example")
file(MAKE_DIRECTORY "${prefix}" "${example_build}")

macro(fail)
  file(REMOVE_RECURSE "${work}")
  message(FATAL_ERROR "package_test: " ${ARGN})
endmacro()

# Runs one step; stops the test, after cleaning up, when it fails.
function(step description)
  message(STATUS "package_test: ${description}")
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    fail("${description} failed (${result})")
  endif()
endfunction()

# 1. The documentation shows the example as it is.
file(READ "${SOURCE_DIR}/docs/embedding.md" docs_text)
foreach(listing cpp:main.cpp cmake:CMakeLists.txt)
  string(REPLACE ":" ";" listing "${listing}")
  list(GET listing 0 language)
  list(GET listing 1 file_name)
  file(READ "${SOURCE_DIR}/examples/embedding/${file_name}" example_text)
  string(FIND "${docs_text}" "```${language}\n${example_text}```" listing_at)
  if(listing_at EQUAL -1)
    fail("the listing in docs/embedding.md differs from examples/embedding/${file_name}")
  endif()
endforeach()

# 2. Install.
step("installing ${BUILD_DIR} into ${prefix}"
  "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${prefix}")
foreach(installed
    lib/cmake/VendimarBI/VendimarBIConfig.cmake
    lib/cmake/VendimarBI/VendimarBIConfigVersion.cmake
    include/VendimarBI/engine/eengine.h
    include/VendimarBI/host/schemainstaller.h
    share/VendimarBI/schema/sqlite.sql
    bin/vbi)
  if(NOT EXISTS "${prefix}/${installed}")
    fail("the installation lacks ${installed}")
  endif()
endforeach()

# 3. Configure and build the example against the installed package only.
set(configure_args -S "${SOURCE_DIR}/examples/embedding" -B "${example_build}"
  "-DCMAKE_PREFIX_PATH=${prefix}" -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF)
if(GENERATOR)
  list(APPEND configure_args -G "${GENERATOR}")
endif()
if(CXX_COMPILER)
  list(APPEND configure_args "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}")
endif()
if(BUILD_TYPE)
  list(APPEND configure_args "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}")
endif()
# The project's own flags too: a library built with sanitizers links only
# into a program built with them.
if(CXX_FLAGS)
  list(APPEND configure_args "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
endif()
step("configuring the example" "${CMAKE_COMMAND}" ${configure_args})
file(STRINGS "${example_build}/CMakeCache.txt" found_at REGEX "^VendimarBI_DIR:")
if(NOT found_at STREQUAL "VendimarBI_DIR:PATH=${prefix}/lib/cmake/VendimarBI")
  fail("the example found another VendimarBI: ${found_at}")
endif()
step("building the example" "${CMAKE_COMMAND}" --build "${example_build}")

# 4. Run it, on a database given by URL and on its own temporary one.
set(program "${example_build}/vendimar_embedding")
step("running the example on ${work}/check.db" "${program}" --check "sqlite://${work}/check.db")
step("running the example on its default database" "${program}" --check)

file(REMOVE_RECURSE "${work}")
message(STATUS "package_test: passed")
