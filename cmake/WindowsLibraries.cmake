# Libraries for the Windows build, under the names that they have elsewhere, so that those who look for them find them. The
# header-only ones are this machine's own: their folders are shown to the cross compiler, and nothing else of this machine's
# headers.

set(shown ${CMAKE_BINARY_DIR}/header-only)
file(MAKE_DIRECTORY ${shown})
foreach(folder CLI nlohmann)
  file(CREATE_LINK /usr/include/${folder} ${shown}/${folder} SYMBOLIC)
endforeach()
foreach(name CLI11::CLI11 nlohmann_json::nlohmann_json)
  add_library(${name} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${name} SYSTEM INTERFACE ${shown})
endforeach()

# What libzip needs: of this package the static library, not the other one.
find_library(ZLIB_LIBRARY libz.a REQUIRED)
find_package(ZLIB REQUIRED)
find_package(Threads REQUIRED)  # libxml2 needs them
# Made by tools/build-windows-libraries.
include(${PROJECT_SOURCE_DIR}/build/libraries-for-windows/objects/libraries.cmake)
add_library(PkgConfig::libdeflate ALIAS deflate)
add_library(PkgConfig::libsodium ALIAS sodium)
add_library(PkgConfig::libzip ALIAS zip)
add_library(LibXml2::LibXml2 ALIAS LibXml2)
add_library(pugixml::pugixml ALIAS pugixml)
add_library(XercesC::XercesC ALIAS xerces-c)

# Found are those above, wherever they are looked for.
foreach(package CLI11 LibXml2 nlohmann_json pugixml XercesC)
  file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/${package}Config.cmake "")
endforeach()
file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/PkgConfigConfig.cmake
  "function(pkg_check_modules name)\n  if(NOT TARGET PkgConfig::\${name})\n    message(FATAL_ERROR \"\${name} is not there\")\n  endif()\nendfunction()\n")
