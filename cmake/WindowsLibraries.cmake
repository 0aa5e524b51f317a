# Libraries for the Windows build, under the names that they have elsewhere. The header-only ones are this machine's own:
# their folders are shown to the cross compiler, and nothing else of this machine's headers.

set(shown ${CMAKE_BINARY_DIR}/header-only)
file(MAKE_DIRECTORY ${shown})
foreach(folder CLI nlohmann)
  file(CREATE_LINK /usr/include/${folder} ${shown}/${folder} SYMBOLIC)
endforeach()
foreach(name CLI11::CLI11 nlohmann_json::nlohmann_json)
  add_library(${name} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${name} SYSTEM INTERFACE ${shown})
endforeach()

# Made by tools/build-xerces-for-windows.
set(xerces ${PROJECT_SOURCE_DIR}/build/xerces-for-windows)
add_library(XercesC::XercesC STATIC IMPORTED GLOBAL)
set_target_properties(XercesC::XercesC PROPERTIES
  IMPORTED_LOCATION ${xerces}/objects/xerces/src/libxerces-c.a
  INTERFACE_COMPILE_DEFINITIONS XERCES_STATIC_LIBRARY
  INTERFACE_INCLUDE_DIRECTORIES "${xerces}/objects/xerces/src;${xerces}/source/src")
