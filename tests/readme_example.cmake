# Compiles the host example of the README, so that it cannot grow stale.
set(readme "${PROJECT_SOURCE_DIR}/README.md")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${readme}")
file(READ "${readme}" text)
string(REGEX MATCH "```cpp\n([^`]*)```" found "${text}")
if(NOT found)
  message(FATAL_ERROR "README.md has no C++ example")
endif()
file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/readme_example.cpp" CONTENT "${CMAKE_MATCH_1}" @ONLY)
add_executable(readme_example "${CMAKE_CURRENT_BINARY_DIR}/readme_example.cpp")
# As a host compiles it: by default with C++17.
set_target_properties(readme_example PROPERTIES CXX_STANDARD 17 CXX_EXTENSIONS OFF)
target_compile_definitions(readme_example PRIVATE QT_NO_KEYWORDS)
target_link_libraries(readme_example PRIVATE KvGuiAdvCtrls)
