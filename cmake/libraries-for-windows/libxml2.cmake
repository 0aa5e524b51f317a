# HTML of imported pages: the parser and its tree. Pages are converted to UTF-8 before.
foreach(option C14N CATALOG DEBUG DOCB FTP HTTP ICONV ICU LEGACY LZMA MODULES OUTPUT PATTERN PROGRAMS PYTHON READER REGEXPS SCHEMAS
               SCHEMATRON TESTS VALID WRITER XINCLUDE XPATH XPTR ZLIB)
  set(LIBXML2_WITH_${option} OFF CACHE BOOL "")
endforeach()
add_subdirectory(${source} libxml2 EXCLUDE_FROM_ALL)
set_target_properties(LibXml2 PROPERTIES EXCLUDE_FROM_ALL OFF)
target_compile_options(LibXml2 PRIVATE -O2)
list(APPEND exported_targets LibXml2)
