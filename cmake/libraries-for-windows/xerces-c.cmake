# XML for exports and string tables: network access is off, characters are converted by Windows, messages are compiled in. It
# needs no file beside it.
set(CMAKE_CXX_STANDARD 14)
set(network OFF CACHE BOOL "")
set(transcoder windows CACHE STRING "")
set(message-loader inmemory CACHE STRING "")
set(mutex-manager windows CACHE STRING "")
set(xmlch-type char16_t CACHE STRING "")
# The library itself; no samples, tests or documents.
add_subdirectory(${source} xerces EXCLUDE_FROM_ALL)

# Many files at a time, which is much quicker than one after the other. These are names that several of them have for
# something of their own.
set(own_names BASELENGTH BUF_LEN CleanupType gFromTable gToTable gToTableSz ResetInProgressType
              ResetParseType)
set(apart "#define VEXA_JOIN_(a, b) a##b\n#define VEXA_JOIN(a, b) VEXA_JOIN_(a, b)\n")
set(together "#undef VEXA_JOIN_\n#undef VEXA_JOIN\n")
foreach(name IN LISTS own_names)
  string(APPEND apart "#define ${name} VEXA_JOIN(${name}_, VEXA_FILE)\n")
  string(APPEND together "#undef ${name}\n")
endforeach()
set_target_properties(xerces-c PROPERTIES
  EXCLUDE_FROM_ALL OFF
  UNITY_BUILD ON
  UNITY_BUILD_BATCH_SIZE 24
  UNITY_BUILD_UNIQUE_ID VEXA_FILE
  UNITY_BUILD_CODE_BEFORE_INCLUDE "${apart}"
  UNITY_BUILD_CODE_AFTER_INCLUDE "${together}")
target_compile_options(xerces-c PRIVATE -O1)
target_compile_definitions(xerces-c INTERFACE XERCES_STATIC_LIBRARY)
target_include_directories(xerces-c INTERFACE
  $<BUILD_INTERFACE:${CMAKE_BINARY_DIR}/xerces/src> $<BUILD_INTERFACE:${source}/src>)
list(APPEND exported_targets xerces-c)
