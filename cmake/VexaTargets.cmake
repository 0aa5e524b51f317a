# What every target of the project shares: language level, warnings, include root, output folders.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
if(WIN32)
  # The system looks for libraries beside the program.
  set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
else()
  set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
  # A tree finds its own libraries wherever it stands, that of the build and an installed one.
  set(CMAKE_INSTALL_RPATH "$ORIGIN/../lib")
  set(CMAKE_BUILD_WITH_INSTALL_RPATH ON)
  # Everything is bound when it is loaded, and what was bound is read-only from then on.
  add_link_options(LINKER:-z,relro LINKER:-z,now)
endif()

# Results of earlier compilations are used again where ccache is there.
find_program(VEXA_CCACHE ccache)
if(VEXA_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # What was read once is part of a source for it, as every other header is.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${VEXA_CCACHE})
endif()

add_library(vexa_options INTERFACE)
target_include_directories(vexa_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(vexa_options INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wformat=2)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Nobody replaces single functions of our libraries at run time; without this g++ inlines none that could be.
  target_compile_options(vexa_options INTERFACE -fno-semantic-interposition)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # g++ 12 sees overlapping copies in plain std::string operations where there are none (its bug 105651).
  target_compile_options(vexa_options INTERFACE -Wno-restrict)
endif()

if(WIN32)
  # Of the system's headers only the core, and no macros with the names of functions of ours.
  target_compile_definitions(vexa_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX)
endif()

# What is shipped checks its stack and the bounds of copies. (Not the tests, which are not optimised.)
add_library(vexa_hardening INTERFACE)
if(NOT WIN32)
  target_compile_options(vexa_hardening INTERFACE
    $<$<CONFIG:Release>:-fstack-protector-strong> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
endif()

# The headers of the standard library that most files include, read once for all parts: this saves a third of the time of a
# build from nothing. Files still include what they use; builds without the option have nothing read beforehand.
option(VEXA_READ_ONCE "Read the common headers of the standard library once for all files" OFF)
if(VEXA_READ_ONCE)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # With headers read that way g++ 12 forgets that they are the system's, and shows what it hides there otherwise.
    target_compile_options(vexa_options INTERFACE -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
  endif()
  add_library(vexa_read_once OBJECT ${CMAKE_CURRENT_LIST_DIR}/read_once.cc)
  target_link_libraries(vexa_read_once PUBLIC vexa_options PRIVATE vexa_hardening)
  target_precompile_headers(vexa_read_once PRIVATE
    <algorithm> <array> <charconv> <functional> <map> <memory> <optional> <span> <string> <string_view> <unordered_map>
    <utility> <variant> <vector>)
endif()

# vexa_read_once_for(TARGET): a library whose files find them read.
function(vexa_read_once_for target)
  if(VEXA_READ_ONCE)
    target_precompile_headers(${target} REUSE_FROM vexa_read_once)
  endif()
endfunction()

option(VEXA_PARTS_TOGETHER "Compile the files of a folder in batches, for half of the time" OFF)

# vexa_together(TARGET): a library whose files are compiled in batches of a folder where that is asked for, so that names at
# file level differ within a folder. Called when all its files are named. Builds without the option prove that each file
# includes what it uses.
function(vexa_together target)
  if(NOT VEXA_PARTS_TOGETHER)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  get_target_property(files ${target} SOURCES)
  get_target_property(own_folder ${target} SOURCE_DIR)
  foreach(file IN LISTS files)
    cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${own_folder})
    cmake_path(GET file PARENT_PATH folder)
    cmake_path(RELATIVE_PATH folder BASE_DIRECTORY ${PROJECT_SOURCE_DIR})
    string(MAKE_C_IDENTIFIER ${folder} group)
    list(APPEND files_of_${group} ${file})
    list(LENGTH files_of_${group} count)
    math(EXPR batch "(${count} - 1) / 10")
    set_source_files_properties(${file} TARGET_DIRECTORY ${target} PROPERTIES UNITY_GROUP ${group}_${batch})
  endforeach()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ takes a file of a batch for a header, whose types must not have members of types of one file.
    target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
  endif()
endfunction()

# vexa_part(NAME source...): one folder of the back end, the module or the front end, as objects that the shared
# libraries, the program and the tests are linked from. VEXA_READS_OWN_HEADERS: names itself what is read once for it.
# VEXA_FILES_APART: its files are not compiled in batches.
function(vexa_part name)
  add_library(${name} OBJECT ${ARGN})
  target_link_libraries(${name} PUBLIC vexa_options PRIVATE vexa_hardening)
  if(NOT VEXA_FILES_APART)
    vexa_together(${name})
  endif()
  if(NOT VEXA_READS_OWN_HEADERS)
    vexa_read_once_for(${name})
  endif()
endfunction()
