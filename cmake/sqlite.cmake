# SQLite's amalgamation, as the npm package better-sqlite3 ships it. The package is pinned by version and
# checksum, kept under build/deps/ (shared by all presets) and never committed; once it is there, no network
# is needed.
set(SQLITE_PACKAGE better-sqlite3)
set(SQLITE_PACKAGE_VERSION 13.2.0)
set(SQLITE_PACKAGE_SHA256 40487589df3496f2ee0079d22b73c63fccebe7db0e8ee9a2c42421861e321e0b)

if(NOT DEFINED JOURNAL_DEPS_DIR)
  set(JOURNAL_DEPS_DIR ${CMAKE_SOURCE_DIR}/build/deps)
endif()
set(sqlite_tarball ${JOURNAL_DEPS_DIR}/${SQLITE_PACKAGE}-${SQLITE_PACKAGE_VERSION}.tgz)
set(sqlite_dir ${JOURNAL_DEPS_DIR}/package/deps/sqlite3)

function(sqlite_tarball_is_right result)
  set(${result} FALSE PARENT_SCOPE)
  if(EXISTS ${sqlite_tarball})
    file(SHA256 ${sqlite_tarball} sum)
    if(sum STREQUAL SQLITE_PACKAGE_SHA256)
      set(${result} TRUE PARENT_SCOPE)
    endif()
  endif()
endfunction()

sqlite_tarball_is_right(have_tarball)
if(NOT have_tarball)
  find_program(NPM npm REQUIRED NO_CMAKE_FIND_ROOT_PATH)
  file(MAKE_DIRECTORY ${JOURNAL_DEPS_DIR})
  execute_process(
    COMMAND ${NPM} pack --loglevel=error ${SQLITE_PACKAGE}@${SQLITE_PACKAGE_VERSION}
    WORKING_DIRECTORY ${JOURNAL_DEPS_DIR}
    RESULT_VARIABLE npm_result OUTPUT_QUIET ERROR_VARIABLE npm_said)
  sqlite_tarball_is_right(have_tarball)
  if(NOT have_tarball)
    message("${npm_said}")
    message(FATAL_ERROR "Could not fetch ${SQLITE_PACKAGE} ${SQLITE_PACKAGE_VERSION} (npm: ${npm_result}), "
                        "or its checksum is wrong: ${sqlite_tarball}")
  endif()
endif()
if(NOT EXISTS ${sqlite_dir}/sqlite3.c OR ${sqlite_tarball} IS_NEWER_THAN ${sqlite_dir}/sqlite3.c)
  execute_process(COMMAND ${CMAKE_COMMAND} -E tar xzf ${sqlite_tarball} package/deps/sqlite3
                  WORKING_DIRECTORY ${JOURNAL_DEPS_DIR} COMMAND_ERROR_IS_FATAL ANY)
  file(TOUCH ${sqlite_dir}/sqlite3.c)
endif()

# No file is ever mapped but a log's index: a file that is cut off, pulled out with its drive or lost with its network
# would end the program where it is read through a mapping, and is an error where it is read.
add_library(sqlite3 STATIC ${sqlite_dir}/sqlite3.c)
target_include_directories(sqlite3 SYSTEM PUBLIC ${sqlite_dir})
target_compile_definitions(sqlite3
  PUBLIC SQLITE_OMIT_LOAD_EXTENSION
  PRIVATE SQLITE_THREADSAFE=0 SQLITE_DQS=0 SQLITE_DEFAULT_MEMSTATUS=0 SQLITE_OMIT_DEPRECATED
          SQLITE_OMIT_SHARED_CACHE SQLITE_LIKE_DOESNT_MATCH_BLOBS SQLITE_MAX_MMAP_SIZE=0
          SQLITE_WIN32_NO_OVERLAPPED)
# The amalgamation is optimised in every preset: its speed is not what a debug build looks into.
target_compile_options(sqlite3 PRIVATE -O2 -w)
