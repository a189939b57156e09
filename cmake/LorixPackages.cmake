# SPDX-License-Identifier: BSD-3-Clause
# What cpack makes Debian packages of; scripts/package calls it as it should be
# called. Needs LORIX_DEBIAN, the prefix /usr and a build without tests.
set(LORIX_PACKAGE_REVISION 1)
set(package_version ${PROJECT_VERSION}-${LORIX_PACKAGE_REVISION})
set(package_sources ${PROJECT_SOURCE_DIR}/packaging)
set(package_control ${PROJECT_BINARY_DIR}/control)

set(CPACK_GENERATOR DEB)
# Each package has a first line of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_NAME lorix)
set(CPACK_PACKAGE_CONTACT "lorix developers <developers@lorix.example>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL library development tools viewer)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${LORIX_PACKAGE_REVISION})
set(CPACK_DEBIAN_PACKAGE_SOURCE lorix)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(library_name liblorix${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_name})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION
"library for documents that carry their own history
A document, typically a PDF file, can carry a history of workflow steps and
copies of the files that they used and made. This library reads it, checks
that nothing was changed, searches it, compares it with another one, and gets
the files out.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liblorix-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${library_name} (= ${package_version}), qt6-base-dev, qt6-5compat-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"library for documents that carry their own history (development files)
A document, typically a PDF file, can carry a history of workflow steps and
copies of the files that they used and made.

This package holds what is needed to build programs with the library: headers,
and packages for CMake and pkg-config.")

# The tools call the interpreter "python", which only that package brings.
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME lorix-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
  "${library_name} (= ${package_version}), python3 (>= 3.9), python-is-python3, qpdf")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION
"command line tools for documents that carry their own history
A document, typically a PDF file, can carry a history of workflow steps and
copies of the files that they used and made.

lorix shows that history, checks that nothing was changed, searches, compares
and extracts; lorixadd adds a step, lorixdel takes the newest one off.")

set(CPACK_DEBIAN_VIEWER_PACKAGE_NAME lorix-viewer)
set(CPACK_DEBIAN_VIEWER_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_VIEWER_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_VIEWER_PACKAGE_DEPENDS "${library_name} (= ${package_version})")
set(CPACK_DEBIAN_VIEWER_PACKAGE_RECOMMENDS "libqt6svg6, qt6-qpa-plugins")
set(CPACK_COMPONENT_VIEWER_DESCRIPTION
"viewer of documents that carry their own history
A document, typically a PDF file, can carry a history of workflow steps and
copies of the files that they used and made.

This desktop program shows that history as a list and as a picture, checks
that nothing was changed, searches, compares and gets files out.")

# Where dpkg-shlibdeps finds the library that is in none of the packages installed here.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

# Each package says who wrote it, under which licence, and what has changed.
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/documents)
set(changes ${PROJECT_BINARY_DIR}/documents/changelog.Debian.gz)
set(news ${PROJECT_BINARY_DIR}/documents/changelog.gz)
add_custom_command(OUTPUT ${changes}
  COMMAND gzip -9nc ${package_sources}/changelog > ${changes}
  DEPENDS ${package_sources}/changelog VERBATIM)
add_custom_command(OUTPUT ${news}
  COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/CHANGELOG.md > ${news}
  DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md VERBATIM)
add_custom_target(lorix_changelogs ALL DEPENDS ${changes} ${news})
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} upper)
  set(name ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  install(FILES ${changes} ${news} ${package_sources}/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
  if(EXISTS ${package_sources}/${component}.lintian-overrides)
    install(FILES ${package_sources}/${component}.lintian-overrides
      DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${name}
      COMPONENT ${component})
  endif()
endforeach()

# Control files bear fixed names, so that each package has a folder of them.
configure_file(${package_sources}/library.triggers ${package_control}/library/triggers COPYONLY)
configure_file(${package_sources}/tools.postinst ${package_control}/tools/postinst COPYONLY)
configure_file(${package_sources}/tools.prerm ${package_control}/tools/prerm COPYONLY)

# The symbols that the library has to have. Building fails where one is gone.
find_program(DPKG_GENSYMBOLS dpkg-gensymbols REQUIRED)
set(symbols ${package_control}/library/symbols)
add_custom_command(OUTPUT ${symbols}
  COMMAND ${DPKG_GENSYMBOLS} -c1 -p${library_name} -v${PROJECT_VERSION}
    -I${package_sources}/${library_name}.symbols -e$<TARGET_FILE:lorix> -O${symbols}
  DEPENDS lorix ${package_sources}/${library_name}.symbols VERBATIM)
add_custom_target(lorix_symbols ALL DEPENDS ${symbols})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${package_control}/library/triggers ${symbols})
set(CPACK_DEBIAN_TOOLS_PACKAGE_CONTROL_EXTRA
  ${package_control}/tools/postinst ${package_control}/tools/prerm)

include(CPack)
