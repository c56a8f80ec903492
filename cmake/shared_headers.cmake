# What nearly every source includes of the system and of the language, compiled once instead of with each source: a
# third of the processor time of a build. Every source still includes what it needs; scripts/analyze.sh builds without.
# Of the library's own code GCC 12 then says, wrongly, that short texts are read and written beyond their end: it does not
# know it for a system's header any more. The build without has these warnings on.
set(WRONG_WITH_SHARED_HEADERS -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
set(SHARED_HEADERS
  <windows.h> <commctrl.h> <algorithm> <array> <cstdint> <cstring> <functional> <memory> <optional> <span> <string>
  <string_view> <utility> <vector>)

# owns_shared_headers(TARGET [header...]): compiles them, with those named, as the target's own.
function(owns_shared_headers target)
  target_precompile_headers(${target} PRIVATE ${SHARED_HEADERS} ${ARGN})
  target_compile_options(${target} PRIVATE ${WRONG_WITH_SHARED_HEADERS})
endfunction()

# shares_headers(TARGET OWNER): the target takes the owner's, which is compiled with the same flags.
function(shares_headers target owner)
  target_precompile_headers(${target} REUSE_FROM ${owner})
  target_compile_options(${target} PRIVATE ${WRONG_WITH_SHARED_HEADERS})
endfunction()
