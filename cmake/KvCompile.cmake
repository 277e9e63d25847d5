# How every target of ours is compiled: kv_compile(target) after add_library or add_executable.

function(kv_compile target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  if(MSVC)
    return()
  endif()
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wconversion -Wshadow)
  # What is handed out names no folder of whoever built it; a debugger that is started in the sources' folder
  # finds them there. What only its builder runs names them in full.
  if(NOT KV_SANITIZE)
    foreach(map IN ITEMS "${PROJECT_SOURCE_DIR}/=" "${PROJECT_BINARY_DIR}=build") # the last that fits counts
      target_compile_options(${target} PRIVATE "$<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${map}>")
    endforeach()
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 raises this one falsely inside std::string at -O2.
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(KV_SANITIZE)
    string(REPLACE "," ";" kinds "${KV_SANITIZE}")
    target_compile_options(${target} PRIVATE -fsanitize=${KV_SANITIZE} -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${KV_SANITIZE})
    if("undefined" IN_LIST kinds)
      target_compile_options(${target} PRIVATE -fno-sanitize-recover=undefined)
    endif()
    if(KV_LIBFUZZER)
      target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
    endif()
  elseif(KV_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# Headers that most files of a target read are compiled once. A debug build goes without, so that a missing
# #include is found; so does one for Windows, where g++ 12 then raises warnings falsely in the system's headers.
# kv_precompile(target header…) or kv_precompile(target REUSE_FROM other).
function(kv_precompile target)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug" AND NOT WIN32)
    if(ARGV1 STREQUAL "REUSE_FROM")
      target_precompile_headers(${target} ${ARGN})
    else()
      target_precompile_headers(${target} PRIVATE ${ARGN})
    endif()
  endif()
endfunction()

# ccache and mold shorten the wait where they are installed; nothing depends on them.
find_program(KV_CCACHE ccache)
if(KV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${KV_CCACHE}")
endif()
find_program(KV_MOLD mold)
if(KV_MOLD AND NOT WIN32)
  add_link_options(-fuse-ld=mold)
endif()
