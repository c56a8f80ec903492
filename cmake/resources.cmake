# Bitmaps and icon are drawn while building, by src/res; of the drawn files this one is written last.
set(ART_FOLDER ${CMAKE_BINARY_DIR}/src/res)
set(ART_DRAWN ${ART_FOLDER}/art/journal.ico)

# program_resources(TARGET SCRIPT [header...]): a resource script as one object file that programs and tests link. The
# resource compiler reports no dependencies of its own: what the script includes beside the headers named is here.
function(program_resources target script)
  add_library(${target} OBJECT ${script})
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/companions ${CMAKE_SOURCE_DIR}/src ${ART_FOLDER})
  target_compile_definitions(${target} PRIVATE
    JOURNAL_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
    JOURNAL_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    JOURNAL_VERSION_PATCH=${PROJECT_VERSION_PATCH})
  set(res ${CMAKE_SOURCE_DIR}/src/res)
  set_property(SOURCE ${script} APPEND PROPERTY OBJECT_DEPENDS
    "${res}/resource.h;${res}/journal.manifest;${res}/version.rch;${ART_DRAWN};${ARGN}")
endfunction()

# windows_program(NAME ENTRY library...): a program with windows, from the one source of its entry.
function(windows_program name entry)
  add_executable(${name} WIN32 ${entry})
  target_link_libraries(${name} PRIVATE product_flags ${ARGN})
  target_link_options(${name} PRIVATE -municode)
endfunction()
