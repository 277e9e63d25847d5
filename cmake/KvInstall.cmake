# What `cmake --install` lays down. Nothing in it holds an absolute path, so that the tree can be moved.
include(CMakePackageConfigHelpers)

option(KV_SYSTEM_PATHS "Install as packages of a system are: programs without a search path of their own" OFF)
set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/KvGuiAdvCtrls")
set(pkgconfig_dir "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
set(share_dir "${CMAKE_INSTALL_DATADIR}/kvguiadvctrls")
set(doc_dir "${CMAKE_INSTALL_DATADIR}/doc/kvguiadvctrls")
set(examples_dir "${doc_dir}/examples")
if(KV_SYSTEM_PATHS)
  set(examples_dir "${CMAKE_INSTALL_DATADIR}/doc/libkvguiadvctrls-dev/examples") # its package's
endif()

# A program with both libraries would hold two string tables; targets that differ in such a property cannot
# be linked into one, and the property's name is what the configuration then reports.
function(kv_only_one_of target kind)
  set(property KvGuiAdvCtrls_IS_LINKED_EITHER_AS_Core_OR_AS_GuiAdvCtrls)
  set_property(TARGET ${target} PROPERTY INTERFACE_${property} ${kind})
  set_property(TARGET ${target} APPEND PROPERTY COMPATIBLE_INTERFACE_STRING ${property})
endfunction()

# The export and the pkg-config file of one library.
function(kv_install_library target name component pc)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  install(TARGETS ${target} EXPORT KvGuiAdvCtrls${component}
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT devel
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT devel
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
  install(EXPORT KvGuiAdvCtrls${component} NAMESPACE Kv:: DESTINATION "${package_dir}" COMPONENT devel)
  file(RELATIVE_PATH KV_PC_TO_PREFIX "/x/${pkgconfig_dir}" "/x")
  string(REGEX REPLACE "/$" "" KV_PC_TO_PREFIX "${KV_PC_TO_PREFIX}")
  configure_file("${PROJECT_SOURCE_DIR}/cmake/${pc}.pc.in" "${PROJECT_BINARY_DIR}/${pc}.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${pc}.pc" DESTINATION "${pkgconfig_dir}" COMPONENT devel)
endfunction()

kv_only_one_of(KvCore Core)
kv_install_library(KvCore Core Core kvguiadvctrls-core)
if(TARGET KvGuiAdvCtrls)
  kv_only_one_of(KvGuiAdvCtrls GuiAdvCtrls)
  kv_install_library(KvGuiAdvCtrls GuiAdvCtrls Widgets kvguiadvctrls)
endif()
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/KvGuiAdvCtrlsConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/KvGuiAdvCtrlsConfig.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/KvGuiAdvCtrlsConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/KvGuiAdvCtrlsConfig.cmake"
  "${PROJECT_BINARY_DIR}/KvGuiAdvCtrlsConfigVersion.cmake"
  DESTINATION "${package_dir}" COMPONENT devel)
set(headers *.h)
if(NOT TARGET KvGuiAdvCtrls) # those of the pure logic alone
  set(headers KvBezierCurve2D.h KvFileNaming.h KvScrollHelpers.h KvTimecode.h KvTypes.h KvUnknown.h KvVideoFormat.h)
endif()
list(TRANSFORM headers PREPEND "PATTERN;")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/" DESTINATION "${KV_INCLUDE_DIR}" COMPONENT devel
  FILES_MATCHING ${headers})

# A program's man page; packages have theirs compressed.
function(kv_install_page program)
  set(page "${PROJECT_SOURCE_DIR}/docs/man/${program}.1")
  if(KV_SYSTEM_PATHS)
    set(packed "${PROJECT_BINARY_DIR}/${program}.1.gz")
    execute_process(COMMAND gzip -9nc "${page}" OUTPUT_FILE "${packed}" COMMAND_ERROR_IS_FATAL ANY)
    set(page "${packed}")
  endif()
  install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tools)
endfunction()

# Programs find the library beside them, wherever the tree stands. A package of a system has its libraries
# where the linker looks anyway.
file(RELATIVE_PATH bin_to_lib "/x/${CMAKE_INSTALL_BINDIR}" "/x/${CMAKE_INSTALL_LIBDIR}")
foreach(program IN ITEMS titler kvgroup)
  if(NOT TARGET ${program})
    continue()
  endif()
  if(NOT KV_SYSTEM_PATHS)
    set_target_properties(${program} PROPERTIES INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
  endif()
  install(TARGETS ${program} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tools)
  kv_install_page(${program})
endforeach()
if(TARGET titler)
  set(desktop "${PROJECT_SOURCE_DIR}/titler/desktop")
  install(FILES "${desktop}/titler.desktop"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT tools)
  install(FILES "${desktop}/titler.svg"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps" COMPONENT tools)
  install(FILES "${desktop}/titler.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages" COMPONENT tools)
  install(FILES "${desktop}/titler.metainfo.xml"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo" COMPONENT tools)
endif()
if(TARGET KvGuiAdvCtrls)
  # To begin a skin of one's own with: the library carries its own within.
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources/skin/" DESTINATION "${share_dir}/skin" COMPONENT devel
    FILES_MATCHING PATTERN "*.svg" PATTERN "*.png" PATTERN "*.ini")
  # A project of its own against what is installed.
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/examples/" DESTINATION "${examples_dir}" COMPONENT devel)
  # Likewise to begin a translation with.
  install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources/lang/" DESTINATION "${share_dir}/lang" COMPONENT devel
    FILES_MATCHING PATTERN "*.ini")
endif()
if(TARGET KvDesigner)
  set(designer_dir "${CMAKE_INSTALL_LIBDIR}/qt6/plugins/designer")
  if(NOT KV_SYSTEM_PATHS)
    file(RELATIVE_PATH plugin_to_lib "/x/${designer_dir}" "/x/${CMAKE_INSTALL_LIBDIR}")
    set_target_properties(KvDesigner PROPERTIES INSTALL_RPATH "$ORIGIN/${plugin_to_lib}")
  endif()
  install(TARGETS KvDesigner LIBRARY DESTINATION "${designer_dir}" COMPONENT designer)
endif()
if(KV_SYSTEM_PATHS)
  include(cmake/KvPackages.cmake) # they have copyright files instead
else()
  install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION "${doc_dir}" COMPONENT runtime)
endif()
