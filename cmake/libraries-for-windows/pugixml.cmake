# Reading of XML.
add_library(pugixml STATIC ${source}/src/pugixml.cpp)
target_compile_options(pugixml PRIVATE -O2)
target_include_directories(pugixml PUBLIC ${source}/src)
list(APPEND exported_targets pugixml)
