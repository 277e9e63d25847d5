# Debian packages: `cmake --preset package && cmake --build --preset package && cpack --preset package`.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kvguiadvctrls)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_VENDOR "the KvGuiAdvCtrls authors")
set(CPACK_PACKAGE_CONTACT "KvGuiAdvCtrls authors <authors@kvguiadvctrls.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_COMPONENTS_ALL runtime devel tools)

# One package: its component, section, what it needs of ours and what it is in a line and in a few.
# What it needs of others is looked up in its programs, which leaves out what was never installed: ours.
macro(kv_package component name section depends summary description)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${depends}")
  set(CPACK_DEBIAN_${upper}_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${description}")
  # A history of one entry is taken for a first upload to Debian, which would close a bug there.
  file(WRITE "${PROJECT_BINARY_DIR}/debian/${name}" "${name}: initial-upload-closes-no-bugs *\n")
  install(FILES "${PROJECT_BINARY_DIR}/debian/${name}"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides" COMPONENT ${component})
  # Every package has its own copyright and history.
  install(FILES "${PROJECT_BINARY_DIR}/debian/copyright" "${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${name}" COMPONENT ${component})
endmacro()

set(debian_version "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")
set(library_package libkvguiadvctrls${KV_ABI_VERSION})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
set(about "Gradients, colours, eases, keys, subtitles, lists of texts, logs, layouts,
caption bars and character maps on Qt 6, for programs that make titles.")
kv_package(runtime ${library_package} libs ""
  "controls for video titling applications" "${about}")
kv_package(devel libkvguiadvctrls-dev libdevel "${library_package} (= ${debian_version}), qt6-base-dev"
  "controls for video titling applications (development files)" "${about}

Headers, the static library of the pure logic, and packages for CMake and
pkg-config.")
kv_package(tools kvguiadvctrls-tools video "${library_package} (= ${debian_version})"
  "title editor, and grouping of media files"
  "titler edits titles, animations and subtitles. kvgroup groups the media files
of a folder by naming rules. Both are built with the KvGuiAdvCtrls library.")
if(TARGET KvDesigner)
  list(APPEND CPACK_COMPONENTS_ALL designer)
  set(CPACK_DEBIAN_DESIGNER_PACKAGE_RECOMMENDS designer-qt6)
  kv_package(designer kvguiadvctrls-designer devel "${library_package} (= ${debian_version})"
    "controls for video titling applications (Qt Designer plugin)"
    "The controls of the KvGuiAdvCtrls library in Qt Designer's list of
widgets, with
their properties; also for programs that load forms at run time.")
endif()

# What the toolkit says itself, in the languages of ours.
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS qt6-translations-l10n)

# Debian brings the linker's cache up to date by a trigger; the packager adds scripts that do it once more.
file(APPEND "${PROJECT_BINARY_DIR}/debian/${library_package}" "${library_package}: maintscript-calls-ldconfig *\n")
file(WRITE "${PROJECT_BINARY_DIR}/debian/shlibs"
  "libKvGuiAdvCtrls ${KV_ABI_VERSION} ${library_package} (>= ${PROJECT_VERSION})\n")
file(WRITE "${PROJECT_BINARY_DIR}/debian/triggers" "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  "${PROJECT_BINARY_DIR}/debian/shlibs" "${PROJECT_BINARY_DIR}/debian/triggers")

file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/debian")
file(READ "${PROJECT_SOURCE_DIR}/LICENSE" licence)
string(REGEX REPLACE "^.*(Permission is)" "\\1" licence "${licence}")
string(REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REGEX REPLACE "\n+$" "" licence "${licence}")
string(REPLACE "\n" "\n " licence "${licence}")
file(WRITE "${PROJECT_BINARY_DIR}/debian/copyright"
  "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\n\nFiles: *\n"
  "Copyright: 2026 the KvGuiAdvCtrls authors\nLicense: Expat\n ${licence}\n")
file(WRITE "${PROJECT_BINARY_DIR}/debian/changelog.Debian"
  "kvguiadvctrls (${debian_version}) unstable; urgency=medium\n\n  * Version ${PROJECT_VERSION}.\n\n"
  " -- ${CPACK_PACKAGE_CONTACT}  Thu, 26 Nov 2026 00:00:00 +0000\n")
execute_process(COMMAND gzip -9nkf "${PROJECT_BINARY_DIR}/debian/changelog.Debian" COMMAND_ERROR_IS_FATAL ANY)
include(CPack)
