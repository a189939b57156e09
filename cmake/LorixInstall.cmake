# SPDX-License-Identifier: BSD-3-Clause
# Where and how things are installed. As Debian packages want it: manual pages
# compressed, no search paths in programs, completions where its shells look.
option(LORIX_DEBIAN "Install as Debian packages want it" OFF)

if(LORIX_DEBIAN)
  set(zsh_folder vendor-completions)
  set(CMAKE_SKIP_INSTALL_RPATH ON)
else()
  set(zsh_folder site-functions)
endif()
set(LORIX_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/${zsh_folder}
  CACHE STRING "Where the completions for zsh are installed")

# lorix_install_manual(PAGE COMPONENT) installs a page of section 1.
function(lorix_install_manual page component)
  if(LORIX_DEBIAN)
    cmake_path(GET page FILENAME name)
    set(packed ${PROJECT_BINARY_DIR}/manuals/${name}.gz)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/manuals)
    add_custom_command(OUTPUT ${packed}
      COMMAND gzip -9nc ${page} > ${packed} DEPENDS ${page} VERBATIM)
    add_custom_target(manual_${name} ALL DEPENDS ${packed})
    set(page ${packed})
  endif()
  install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
endfunction()
