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
vexa_installed_files(looks Looks *)
add_custom_target(vexa_installation ALL DEPENDS ${installed})
