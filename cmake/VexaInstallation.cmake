# What the program expects in the folder above its own: string tables in lang/LANGUAGE, table looks and chart templates
# in Looks. The target vexa_installation copies them there, again whenever one changes.

set(installed)
# vexa_installed_files(FROM TO PATTERN): copies what PATTERN finds below FROM to the same place below TO.
function(vexa_installed_files from to pattern)
  file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/${from} ${PROJECT_SOURCE_DIR}/${from}/${pattern})
  foreach(file IN LISTS files)
    set(copy ${CMAKE_BINARY_DIR}/${to}/${file})
    add_custom_command(OUTPUT ${copy}
                       COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/${from}/${file} ${copy}
                       DEPENDS ${PROJECT_SOURCE_DIR}/${from}/${file}
                       VERBATIM)
    list(APPEND installed ${copy})
  endforeach()
  set(installed ${installed} PARENT_SCOPE)
endfunction()

vexa_installed_files(stringtables lang *.xlf)
vexa_installed_files(stringtables lang statistic-roles.xml)
vexa_installed_files(looks Looks *)
add_custom_target(vexa_installation ALL DEPENDS ${installed})

if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT AND NOT WIN32)
  set(CMAKE_INSTALL_PREFIX /opt/vexa CACHE PATH "Where cmake --install puts bin, lib, lang and Looks" FORCE)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/stringtables/ DESTINATION lang
        FILES_MATCHING PATTERN *.xlf PATTERN statistic-roles.xml)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/looks/ DESTINATION Looks)
